#include "defaults/system/random_guid_service.h"

#include <sys/random.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <string_view>

#include "automation/runtime_error.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using GuidBytes = std::array<unsigned char, 16>;

GuidBytes RandomBytes() {
    GuidBytes bytes{};
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count = getrandom(bytes.data() + filled, bytes.size() - filled, 0);
        if (count > 0) {
            filled += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            RaiseRuntimeError(error_number::kInternal, "the system's random source gives nothing");
        }
    }
    return bytes;
}

std::string GuidText(const GuidBytes& bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text = "{";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        text += kDigits[bytes[i] >> 4U];
        text += kDigits[bytes[i] & 0xFU];
    }
    text += '}';
    return text;
}

}  // namespace

std::string RandomGuidService::NewGuid() {
    GuidBytes bytes = RandomBytes();
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0FU) | 0x40U);  // version 4
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3FU) | 0x80U);  // the variant that versions belong to
    return GuidText(bytes);
}

std::string RandomGuidService::NullGuid() {
    return GuidText({});
}

}  // namespace kxjob
