#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kelmo {

// A random (version 4) UUID, made and checked by GLib. Written as 36-character
// upper-case hyphenated text; parsing accepts either case.
class Uuid {
public:
    static Uuid random();
    static std::optional<Uuid> parse(std::string_view text);

    std::string toString() const { return {text_.begin(), text_.end()}; }
    std::string_view text() const { return {text_.data(), text_.size()}; }

    bool operator==(const Uuid&) const = default;

private:
    std::array<char, 36> text_{}; // kept inline: a library holds thousands
};

} // namespace kelmo

template <>
struct std::hash<kelmo::Uuid> {
    std::size_t operator()(const kelmo::Uuid& uuid) const noexcept;
};
