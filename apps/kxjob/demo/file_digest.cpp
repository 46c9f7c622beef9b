#include "demo/file_digest.h"

#include <fmt/format.h>
#include <openssl/evp.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>
#include <system_error>

#include "kxjob/automation_error.h"

namespace kxjob::command {
namespace {

constexpr std::size_t kChunk = 65536;
constexpr std::size_t kIdentifierArgument = 5;
constexpr std::size_t kArgumentCount = 7;

[[noreturn]] void Fail(const std::string& what, const std::string& path) {
    throw AutomationError(error_number::kInternal, FileDigest::kProgId,
                          what + " " + path + ": " + std::generic_category().message(errno));
}

std::string Sha256(const std::string& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (file == nullptr) Fail("Unable to open", path);
    const std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX*)> context(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    if (context == nullptr || EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) != 1) {
        throw AutomationError(error_number::kInternal, FileDigest::kProgId, "SHA-256 is not available");
    }
    std::array<unsigned char, kChunk> chunk{};
    std::size_t count = 0;
    while ((count = std::fread(chunk.data(), 1, chunk.size(), file.get())) > 0) {
        EVP_DigestUpdate(context.get(), chunk.data(), count);
    }
    if (std::ferror(file.get()) != 0) Fail("Unable to read", path);
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int length = 0;
    EVP_DigestFinal_ex(context.get(), digest.data(), &length);
    std::string text;
    for (unsigned int i = 0; i < length; ++i) text += fmt::format("{:02x}", digest[i]);
    return text;
}

}  // namespace

Value FileDigest::Call(std::string_view method, std::span<const Value> arguments) {
    if (method != "RunJobItem") RaiseUnknownMember(method);
    RequireArguments(method, arguments, kArgumentCount);
    return Sha256(arguments[kIdentifierArgument].ToText());
}

}  // namespace kxjob::command
