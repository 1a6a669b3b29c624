#include "Id/Guid.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <iterator>

namespace orv {

namespace {

constexpr std::size_t uuidLength = 36;
constexpr std::size_t globalIdLength = 22;
constexpr std::string_view hexDigits = "0123456789abcdef";
constexpr std::string_view globalIdDigits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";

/// The sixteen bytes from the most significant one on, the order in which both spellings write them.
using Bytes = std::array<std::uint8_t, 16>;

constexpr std::uint8_t noDigit = 0xff;

constexpr std::array<std::uint8_t, 256> valuesOf(std::string_view digits) {
    std::array<std::uint8_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t value = 0; value < digits.size(); ++value) {
        values[static_cast<unsigned char>(digits[value])] = static_cast<std::uint8_t>(value);
    }
    return values;
}

constexpr bool isUuidDash(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

std::uint8_t hexValue(char digit) {
    static constexpr auto lowerCase = valuesOf(hexDigits);
    static constexpr auto upperCase = valuesOf("0123456789ABCDEF");
    const auto index = static_cast<unsigned char>(digit);
    return std::min(lowerCase[index], upperCase[index]);
}

bool parseUuid(std::string_view text, Bytes& bytes) {
    std::size_t nibble = 0;
    for (std::size_t position = 0; position < uuidLength; ++position) {
        if (isUuidDash(position)) {
            if (text[position] != '-') {
                return false;
            }
            continue;
        }
        const std::uint8_t value = hexValue(text[position]);
        if (value == noDigit) {
            return false;
        }
        auto& byte = bytes[nibble / 2];
        byte = static_cast<std::uint8_t>((byte << 4U) | value);
        ++nibble;
    }
    return true;
}

// A GlobalId is 132 bits long; its first four bits are zero. So the first two characters give the first byte,
// and each four after them give three bytes.

bool parseGlobalId(std::string_view text, Bytes& bytes) {
    static constexpr auto values = valuesOf(globalIdDigits);
    std::uint32_t bits = 0;
    std::size_t filled = 0;
    for (std::size_t position = 0; position < globalIdLength; ++position) {
        const std::uint8_t value = values[static_cast<unsigned char>(text[position])];
        if (value == noDigit || (position == 0 && value > 3)) {
            return false;
        }
        bits = (bits << 6U) | value;
        if (position == 1) {
            bytes[filled++] = static_cast<std::uint8_t>(bits);
            bits = 0;
        } else if (position % 4 == 1) {
            bytes[filled++] = static_cast<std::uint8_t>(bits >> 16U);
            bytes[filled++] = static_cast<std::uint8_t>(bits >> 8U);
            bytes[filled++] = static_cast<std::uint8_t>(bits);
            bits = 0;
        }
    }
    return true;
}

std::string uuidText(const Bytes& bytes) {
    std::string text;
    text.reserve(uuidLength);
    for (const std::uint8_t byte : bytes) {
        if (isUuidDash(text.size())) {
            text += '-';
        }
        text += hexDigits[byte >> 4U];
        text += hexDigits[byte & 0xfU];
    }
    return text;
}

/// Where the system happens to have put this library, which is random.
std::uint64_t processKey() {
    static const char anchor = 0;
    return reinterpret_cast<std::uintptr_t>(&anchor); // NOLINT(cppcoreguidelines-pro-type-reinterpret-cast)
}

/// Ids of one authoring tool often differ in a few bits only. Multiplying by an odd constant (2^64 divided by
/// the golden ratio) carries each bit upwards, and the shifts bring them down again.
std::uint64_t mixed(std::uint64_t bits) {
    bits = (bits ^ (bits >> 32U)) * 0x9e3779b97f4a7c15U;
    return bits ^ (bits >> 29U);
}

} // namespace

bool Guid::boSet(std::string_view text) {
    Bytes bytes{};
    const bool parsed = (text.size() == uuidLength && parseUuid(text, bytes)) ||
                        (text.size() == globalIdLength && parseGlobalId(text, bytes));
    if (!parsed) {
        return false;
    }
    data1 = (static_cast<std::uint32_t>(bytes[0]) << 24U) | (static_cast<std::uint32_t>(bytes[1]) << 16U) |
            (static_cast<std::uint32_t>(bytes[2]) << 8U) | bytes[3];
    data2 = static_cast<std::uint16_t>((bytes[4] << 8U) | bytes[5]);
    data3 = static_cast<std::uint16_t>((bytes[6] << 8U) | bytes[7]);
    std::copy(bytes.begin() + 8, bytes.end(), data4);
    return true;
}

std::string Guid::toString(bool asUuid) const {
    if (!asUuid) {
        const auto globalId = toGlobalId();
        return {globalId.data(), globalId.size()};
    }
    Bytes bytes{static_cast<std::uint8_t>(data1 >> 24U), static_cast<std::uint8_t>(data1 >> 16U),
                static_cast<std::uint8_t>(data1 >> 8U),  static_cast<std::uint8_t>(data1),
                static_cast<std::uint8_t>(data2 >> 8U),  static_cast<std::uint8_t>(data2),
                static_cast<std::uint8_t>(data3 >> 8U),  static_cast<std::uint8_t>(data3)};
    std::copy(std::begin(data4), std::end(data4), bytes.begin() + 8);
    return uuidText(bytes);
}

std::array<char, globalIdLength> Guid::toGlobalId() const {
    const std::uint64_t high = (std::uint64_t{data1} << 32U) | (std::uint64_t{data2} << 16U) | data3;
    std::uint64_t low = 0;
    for (const std::uint8_t byte : data4) {
        low = (low << 8U) | byte;
    }
    std::array<char, globalIdLength> text{};
    const auto putDigits = [&text](std::size_t begin, std::size_t end, std::uint64_t bits) {
        for (std::size_t position = end; position > begin; --position) {
            text[position - 1] = globalIdDigits[bits & 0x3fU];
            bits >>= 6U;
        }
    };
    // Eight digits of the upper 44 bits, eight of the next 48 and six of the last 36.
    putDigits(0, 8, high >> 20U);
    putDigits(8, 16, (high << 28U) | (low >> 36U));
    putDigits(16, globalIdLength, low);
    return text;
}

std::uint64_t Guid::hash() const noexcept {
    const auto [high, low] = std::bit_cast<std::array<std::uint64_t, 2>>(*this);
    return mixed(mixed(mixed(high ^ processKey()) ^ low));
}

} // namespace orv
