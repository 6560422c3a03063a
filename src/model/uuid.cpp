#include "model/uuid.h"

#include <algorithm>
#include <cctype>
#include <glib.h>

namespace kelmo {

Uuid Uuid::random() {
    g_autofree char* text = g_uuid_string_random();
    return *parse(text);
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    const std::string terminated{text};
    if (!g_uuid_string_is_valid(terminated.c_str()))
        return std::nullopt;
    Uuid uuid;
    std::transform(terminated.begin(), terminated.end(), uuid.text_.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return uuid;
}

} // namespace kelmo

std::size_t std::hash<kelmo::Uuid>::operator()(const kelmo::Uuid& uuid) const noexcept {
    return std::hash<std::string_view>{}(uuid.text());
}
