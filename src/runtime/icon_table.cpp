#include "runtime/icon_table.h"

#include <algorithm>

namespace kelmo {

namespace {

// Whether the line's name list (its first [...]) holds one of the names.
bool namesOneOf(std::string_view line, const std::vector<std::string>& names) {
    const auto open = line.find('[');
    const auto close = line.find(']', open);
    if (open == std::string_view::npos || close == std::string_view::npos)
        return false;
    for (auto& quoted : iconNamesOf(line.substr(open + 1, close - open - 1))) {
        const std::string_view name{quoted};
        if (name.size() >= 2 &&
            std::find(names.begin(), names.end(), name.substr(1, name.size() - 2)) != names.end())
            return true;
    }
    return false;
}

} // namespace

std::string iconLinesNaming(std::string_view table, const std::vector<std::string>& names) {
    constexpr std::string_view iconCall = "kelmoLucideIcon(";
    std::string lines;
    while (!table.empty()) {
        const auto end = table.find('\n');
        const auto line = table.substr(0, end);
        table.remove_prefix(end == std::string_view::npos ? table.size() : end + 1);
        if (line.starts_with(iconCall) && namesOneOf(line, names))
            lines.append(line).push_back('\n');
    }
    return lines;
}

std::vector<std::string> iconNamesOf(std::string_view list) {
    std::vector<std::string> names;
    while (!list.empty()) {
        const auto comma = list.find(',');
        if (const auto name = list.substr(0, comma); !name.empty())
            names.emplace_back(name);
        list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
    }
    return names;
}

} // namespace kelmo
