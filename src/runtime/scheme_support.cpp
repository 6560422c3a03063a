#include "runtime/scheme_support.h"

#include <fstream>
#include <glib.h>
#include <iterator>
#include <memory>

namespace kelmo {

std::optional<SchemeRequestUrl> SchemeRequestUrl::parse(std::string_view url) {
    const std::string text{url};
    std::unique_ptr<GUri, decltype(&g_uri_unref)> parsed{
        g_uri_parse(text.c_str(), G_URI_FLAGS_ENCODED_PATH, nullptr), &g_uri_unref};
    if (!parsed)
        return std::nullopt;
    // The path is decoded here rather than by the parser, which refuses bytes that are
    // not UTF-8: file names are bytes. A decoded NUL makes the URL unusable.
    std::unique_ptr<char, decltype(&g_free)> path{
        g_uri_unescape_string(g_uri_get_path(parsed.get()), nullptr), &g_free};
    if (!path)
        return std::nullopt;
    SchemeRequestUrl result;
    if (const char* host = g_uri_get_host(parsed.get()))
        result.host = host;
    result.path = path.get();
    if (const char* query = g_uri_get_query(parsed.get()))
        result.query = query;
    return result;
}

std::string SchemeRequestUrl::lastPathComponent() const {
    const auto end = path.find_last_not_of('/');
    if (end == std::string::npos)
        return {};
    const auto slash = path.rfind('/', end);
    const auto begin = slash == std::string::npos ? 0 : slash + 1;
    return path.substr(begin, end + 1 - begin);
}

std::optional<std::string> SchemeRequestUrl::queryValue(std::string_view name) const {
    std::unique_ptr<GHashTable, decltype(&g_hash_table_unref)> parameters{
        g_uri_parse_params(query.c_str(), -1, "&", G_URI_PARAMS_NONE, nullptr),
        &g_hash_table_unref};
    if (!parameters)
        return std::nullopt;
    const std::string key{name};
    const auto* value =
        static_cast<const char*>(g_hash_table_lookup(parameters.get(), key.c_str()));
    if (!value)
        return std::nullopt;
    return value;
}

std::string jsonStringLiteral(std::string_view text, JsonLiteralUse use) {
    static constexpr char hex[] = "0123456789abcdef";
    const bool inScript = use == JsonLiteralUse::scriptElement;
    std::string literal;
    literal.reserve(text.size() + 2);
    literal.push_back('"');
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            literal.push_back('\\');
            literal.push_back(c);
        } else if (c == '\n') {
            literal.append("\\n");
        } else if (c == '\r') {
            literal.append("\\r");
        } else if (c == '\t') {
            literal.append("\\t");
        } else if (c == '\b') {
            literal.append("\\b");
        } else if (c == '\f') {
            literal.append("\\f");
        } else if (byte < 0x20 || (inScript && (c == '<' || c == '>' || c == '&'))) {
            literal.append("\\u00").push_back(hex[byte >> 4]);
            literal.push_back(hex[byte & 0xf]);
        } else if (inScript && c == '/') {
            literal.append("\\/");
        } else if (inScript &&
                   (text.compare(at, 3, "\u2028") == 0 || text.compare(at, 3, "\u2029") == 0)) {
            // Line terminators in older script parsers.
            literal.append(text[at + 2] == '\xa8' ? "\\u2028" : "\\u2029");
            at += 2;
        } else {
            literal.push_back(c);
        }
    }
    literal.push_back('"');
    return literal;
}

bool isValidUtf8(std::string_view bytes) {
    // GLib's validation stops at NUL characters, so validate the runs between them.
    while (!bytes.empty()) {
        const auto nul = bytes.find('\0');
        const auto run = bytes.substr(0, nul);
        if (!g_utf8_validate_len(run.data(), run.size(), nullptr))
            return false;
        bytes.remove_prefix(nul == std::string_view::npos ? bytes.size() : nul + 1);
    }
    return true;
}

std::optional<std::string> readWholeFile(const std::filesystem::path& file) {
    std::ifstream in{file, std::ios::binary};
    if (!in)
        return std::nullopt;
    std::string content{std::istreambuf_iterator<char>{in}, std::istreambuf_iterator<char>{}};
    if (in.bad())
        return std::nullopt;
    return content;
}

} // namespace kelmo
