#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace kelmo {

// The parts of a scheme request's URL that routing looks at.
struct SchemeRequestUrl {
    std::optional<std::string> host; // absent when the URL has no authority
    std::string path;                // percent-decoded; query and fragment dropped
    std::string query;               // as it stands, without the '?'; empty when absent

    // Parses an absolute URL; nothing when it is not one (or decodes to a NUL byte).
    static std::optional<SchemeRequestUrl> parse(std::string_view url);

    // The last component of the path, trailing slashes ignored ("/a/b.js" -> "b.js").
    std::string lastPathComponent() const;
    // The decoded value of a parameter of the query ("a=1&b=2"); nothing when absent.
    std::optional<std::string> queryValue(std::string_view name) const;
};

// The text as a JSON string literal, as JSON.stringify writes it: quotation mark and
// reverse solidus escaped, control characters as escapes, everything else as it is.
// Safe in a script element, it also writes "/" as "\/" and "<", ">", "&", U+2028 and
// U+2029 as \u escapes, so that no text ("</script>", "<!--<script>") changes how the
// HTML parser reads the element.
enum class JsonLiteralUse { data, scriptElement };
std::string jsonStringLiteral(std::string_view text, JsonLiteralUse use = JsonLiteralUse::data);

// Whether the bytes are UTF-8 text (NUL characters included).
bool isValidUtf8(std::string_view bytes);

// The whole file as bytes; nothing when it cannot be read.
std::optional<std::string> readWholeFile(const std::filesystem::path& file);

} // namespace kelmo
