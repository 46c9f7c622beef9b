#include "defaults/store/odbc/tds_stub.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "automation/utf16.h"

namespace kxjob::testing_support {
namespace {

constexpr std::size_t kHeader = 8;
constexpr std::size_t kPacket = 4096;

enum PacketType : unsigned char {
    kBatch = 0x01,
    kCall = 0x03,
    kReply = 0x04,
    kTransaction = 0x0E,
    kLogin = 0x10,
    kPrelogin = 0x12,
};

/// The least significant byte first.
template <typename Number>
std::string Bytes(Number number, std::size_t size = sizeof(Number)) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(static_cast<std::uint64_t>(number) >> (8U * i));
    }
    return bytes;
}

std::string Wide(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) bytes += Bytes(static_cast<std::uint16_t>(unit));
    return bytes;
}

std::u16string FromWide(std::string_view bytes) {
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                      static_cast<unsigned>(static_cast<unsigned char>(bytes[i + 1])) << 8U);
    }
    return text;
}

std::uint32_t Number(std::string_view bytes, std::size_t at, std::size_t size) {
    std::uint32_t number = 0;
    for (std::size_t i = size; i > 0; --i) {
        number = number << 8U | static_cast<unsigned char>(bytes[at + i - 1]);
    }
    return number;
}

bool Receive(int socket, char* bytes, std::size_t size) {
    return size == 0 || recv(socket, bytes, size, MSG_WAITALL) == static_cast<ssize_t>(size);
}

/// All packets of one message; false when the other side has gone.
bool ReceiveMessage(int socket, unsigned char& type, std::string& payload) {
    payload.clear();
    std::array<char, kHeader> header{};
    do {
        if (!Receive(socket, header.data(), header.size())) return false;
        type = static_cast<unsigned char>(header[0]);
        const std::size_t length = static_cast<std::size_t>(static_cast<unsigned char>(header[2])) << 8U |
                                   static_cast<unsigned char>(header[3]);
        const std::size_t before = payload.size();
        payload.resize(before + length - kHeader);
        if (!Receive(socket, payload.data() + before, length - kHeader)) return false;
    } while ((static_cast<unsigned char>(header[1]) & 1U) == 0);
    return true;
}

void SendMessage(int socket, std::string_view payload) {
    do {
        const std::string_view part = payload.substr(0, kPacket - kHeader);
        payload.remove_prefix(part.size());
        const std::size_t length = part.size() + kHeader;
        std::string packet = {static_cast<char>(kReply),
                              payload.empty() ? '\1' : '\0',
                              static_cast<char>(length >> 8U),
                              static_cast<char>(length),
                              0,
                              0,
                              1,
                              0};
        packet += part;
        send(socket, packet.data(), packet.size(), MSG_NOSIGNAL);
    } while (!payload.empty());
}

/// No encryption.
std::string PreloginReply() {
    const std::string options = {0, 0, 11, 0, 6, 1, 0, 17, 0, 1, static_cast<char>(0xFF)};
    return options + std::string("\x0F\0\x07\xD0\0\0", 6) + '\2';
}

std::string Token(char token, const std::string& content) {
    return token + Bytes(static_cast<std::uint16_t>(content.size())) + content;
}

std::string LoginReply() {
    const std::u16string name = u"Microsoft SQL Server";
    const std::string acknowledged = std::string("\1\x74\0\0\4", 5) + static_cast<char>(name.size()) +
                                     Wide(name) + std::string("\x0F\0\x07\xD0", 4);
    return Token('\xAD', acknowledged) + TdsStub::Done();
}

/// A transaction's begin gives its descriptor, its end takes it away.
std::string TransactionReply(unsigned request) {
    constexpr unsigned kBegin = 5;
    constexpr unsigned kCommit = 7;
    const std::string descriptor = "\x08transact";
    const std::string none(1, '\0');
    const char change = request == kBegin ? '\x08' : request == kCommit ? '\x09' : '\x0A';
    const std::string content = change + (request == kBegin ? descriptor + none : none + descriptor);
    return Token('\xE3', content) + TdsStub::Done();
}

std::string TransactionName(unsigned request) {
    switch (request) {
        case 5: return "begin";
        case 7: return "commit";
        case 8: return "rollback";
        default: return "transaction request " + std::to_string(request);
    }
}

}  // namespace

TdsStub::TdsStub() : listener_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (listener_ < 0 || bind(listener_, generic, length) != 0 || listen(listener_, 5) != 0 ||
        getsockname(listener_, generic, &length) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
    port_ = ntohs(address.sin_port);
    server_ = std::thread([this] { Serve(); });
}

TdsStub::~TdsStub() {
    shutdown(listener_, SHUT_RDWR);
    {
        const std::lock_guard lock(mutex_);
        if (connection_ >= 0) shutdown(connection_, SHUT_RDWR);
    }
    server_.join();
    close(listener_);
}

std::string TdsStub::ConnectionString() const {
    return "Driver={FreeTDS};Server=127.0.0.1;Port=" + std::to_string(port_) +
           ";Database=kx;UID=kx;PWD=kx;Encryption=off;";
}

void TdsStub::Answer(const std::string& part, const std::string& tokens) {
    const std::lock_guard lock(mutex_);
    rules_.push_back({part, tokens, false});
}

void TdsStub::HangUpOn(const std::string& part) {
    const std::lock_guard lock(mutex_);
    rules_.push_back({part, {}, true});
}

std::vector<std::string> TdsStub::Requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

std::string TdsStub::Done() {
    return '\xFD' + std::string(12, '\0');
}

std::string TdsStub::Error(std::int32_t number, const std::string& message) {
    const std::u16string text = ToUtf16(message);
    return Token('\xAA', Bytes(number) + "\x01\x10" + Bytes(static_cast<std::uint16_t>(text.size())) +
                             Wide(text) + std::string(2, '\0') + Bytes(std::int32_t{1})) +
           '\xFD' + std::string("\2\0", 2) + std::string(10, '\0');
}

std::string TdsStub::Row(std::int32_t number, std::u16string_view text) {
    const std::string nullable = std::string(4, '\0') + std::string("\1\0", 2);
    const std::string columns = nullable + "\x26\x04" + "\1" + Wide(u"n") +  //
                                nullable + "\xE7\xFF\xFF" + std::string("\x09\x04\xD0\x00\x34", 5) + "\1" +
                                Wide(u"v");
    const std::string bytes = Wide(text);
    const std::string row = '\x04' + Bytes(number) + Bytes(std::uint64_t{bytes.size()}) +
                            (bytes.empty() ? "" : Bytes(static_cast<std::uint32_t>(bytes.size())) + bytes) +
                            Bytes(std::uint32_t{0});
    return '\x81' + Bytes(std::uint16_t{2}) + columns + '\xD1' + row + Done();
}

void TdsStub::Serve() {
    while (true) {
        const int socket = accept(listener_, nullptr, nullptr);
        if (socket < 0) return;
        {
            const std::lock_guard lock(mutex_);
            connection_ = socket;
        }
        ServeConnection(socket);
        const std::lock_guard lock(mutex_);
        connection_ = -1;
        close(socket);
    }
}

void TdsStub::ServeConnection(int socket) {
    unsigned char type = 0;
    std::string payload;
    while (ReceiveMessage(socket, type, payload)) {
        if (!Take(socket, type, payload)) return;
    }
}

bool TdsStub::Take(int socket, unsigned char type, const std::string& payload) {
    if (type == kPrelogin || type == kLogin) {
        SendMessage(socket, type == kPrelogin ? PreloginReply() : LoginReply());
        return true;
    }
    const std::size_t headers = Number(payload, 0, 4);
    const unsigned transaction = type == kTransaction ? Number(payload, headers, 2) : 0;
    std::string request = payload.substr(headers);
    if (type == kBatch) request = ToUtf8(FromWide(request));
    if (type == kTransaction) request = TransactionName(transaction);
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
    const Rule* rule = RuleFor(request);
    if (rule != nullptr && rule->hangUp) return false;
    if (rule != nullptr) {
        SendMessage(socket, rule->tokens);
    } else {
        SendMessage(socket, type == kTransaction ? TransactionReply(transaction) : Done());
    }
    return true;
}

const TdsStub::Rule* TdsStub::RuleFor(const std::string& request) const {
    const auto rule = std::find_if(rules_.begin(), rules_.end(), [&](const Rule& candidate) {
        return request.find(candidate.part) != std::string::npos;
    });
    return rule == rules_.end() ? nullptr : &*rule;
}

}  // namespace kxjob::testing_support
