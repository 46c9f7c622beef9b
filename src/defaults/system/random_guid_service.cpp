#include "defaults/system/random_guid_service.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "defaults/system/random_bytes.h"

namespace kxjob {
namespace {

using GuidBytes = std::array<unsigned char, 16>;

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
    GuidBytes bytes{};
    FillWithRandomBytes(bytes);
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0FU) | 0x40U);  // version 4
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3FU) | 0x80U);  // the variant that versions belong to
    return GuidText(bytes);
}

std::string RandomGuidService::NullGuid() {
    return GuidText({});
}

}  // namespace kxjob
