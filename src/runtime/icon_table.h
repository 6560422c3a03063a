#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelmo {

// lucide-react's icons as the player page loads them (lucide-icons.js, made at build
// time): a script of one line per icon,
//   kelmoLucideIcon("activity",["Activity","ActivityIcon","LucideActivity"],"<JSON>");
// and a last line that lists the package's `icons` export.
inline constexpr std::string_view lucideIconsResource = "lucide-icons.js";

// The lines of the table whose icon is exported under one of the names, in the
// table's order: the script for an artifact that uses only those icons.
std::string iconLinesNaming(std::string_view table, const std::vector<std::string>& names);

// The names of a query's comma-separated list ("Heart,Star"); empty entries dropped.
std::vector<std::string> iconNamesOf(std::string_view list);

} // namespace kelmo
