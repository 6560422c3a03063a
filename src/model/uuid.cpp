#include "model/uuid.h"

#include <cstring>
#include <random>

namespace kelmo {
namespace {

int hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

bool isHyphenPosition(std::size_t i) {
    return i == 8 || i == 13 || i == 18 || i == 23;
}

} // namespace

Uuid Uuid::random() {
    // Seeded once per thread from the system's entropy source; cheap enough to
    // mint thousands of ids per folder scan.
    thread_local std::mt19937_64 generator{[] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device()};
        return std::mt19937_64{seed};
    }()};
    Uuid uuid;
    const std::uint64_t high = generator();
    const std::uint64_t low = generator();
    std::memcpy(uuid.bytes_.data(), &high, 8);
    std::memcpy(uuid.bytes_.data() + 8, &low, 8);
    uuid.bytes_[6] = static_cast<std::uint8_t>((uuid.bytes_[6] & 0x0F) | 0x40); // version 4
    uuid.bytes_[8] = static_cast<std::uint8_t>((uuid.bytes_[8] & 0x3F) | 0x80); // RFC 4122 variant
    return uuid;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != 36)
        return std::nullopt;
    Uuid uuid;
    std::size_t byte = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (isHyphenPosition(i)) {
            if (text[i] != '-')
                return std::nullopt;
            ++i;
            continue;
        }
        const int high = hexValue(text[i]);
        const int low = hexValue(text[i + 1]);
        if (high < 0 || low < 0 || isHyphenPosition(i + 1))
            return std::nullopt;
        uuid.bytes_[byte++] = static_cast<std::uint8_t>(high << 4 | low);
        i += 2;
    }
    return uuid;
}

std::string Uuid::toString() const {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text.push_back('-');
        text.push_back(digits[bytes_[i] >> 4]);
        text.push_back(digits[bytes_[i] & 0x0F]);
    }
    return text;
}

} // namespace kelmo

std::size_t std::hash<kelmo::Uuid>::operator()(const kelmo::Uuid& uuid) const noexcept {
    std::uint64_t high;
    std::uint64_t low;
    std::memcpy(&high, uuid.bytes().data(), 8);
    std::memcpy(&low, uuid.bytes().data() + 8, 8);
    return std::hash<std::uint64_t>{}(high ^ (low * 0x9E3779B97F4A7C15ULL));
}
