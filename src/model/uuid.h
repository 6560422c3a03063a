#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kelmo {

// A random (version 4) UUID. Written as 36-character upper-case hyphenated
// text; parsing accepts either case.
class Uuid {
public:
    static Uuid random();
    static std::optional<Uuid> parse(std::string_view text);

    std::string toString() const;
    const std::array<std::uint8_t, 16>& bytes() const { return bytes_; }

    bool operator==(const Uuid&) const = default;

private:
    std::array<std::uint8_t, 16> bytes_{};
};

} // namespace kelmo

template <>
struct std::hash<kelmo::Uuid> {
    std::size_t operator()(const kelmo::Uuid& uuid) const noexcept;
};
