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
    std::string text = "{00000000-0000-0000-0000-000000000000}";
    std::size_t place = 1;
    for (const unsigned char byte : bytes) {
        if (text[place] == '-') ++place;
        text[place++] = kDigits[byte >> 4U];
        text[place++] = kDigits[byte & 0xFU];
    }
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
