#include "store/settings_store.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <ctime>
#include <glib.h>
#include <glib/gstdio.h>
#include <memory>

namespace kelmo {
namespace {

struct GFreeDeleter {
    void operator()(void* p) const { g_free(p); }
};
struct GErrorDeleter {
    void operator()(GError* error) const { g_error_free(error); }
};
using GCharPtr = std::unique_ptr<gchar, GFreeDeleter>;
using GErrorPtr = std::unique_ptr<GError, GErrorDeleter>;

// GVariants are immutable, so handing glibmm's const pointer to the C API is safe.
GVariant* raw(const Glib::VariantBase& value) {
    return const_cast<GVariant*>(value.gobj());
}

Glib::VariantBase wrap(GVariant* variant) {
    return Glib::VariantBase{variant};
}

Glib::VariantBase unboxed(const Glib::VariantBase& value) {
    if (value && g_variant_is_of_type(raw(value), G_VARIANT_TYPE_VARIANT))
        return Glib::VariantBase{g_variant_get_variant(raw(value)), false};
    return value;
}

std::string corruptCopyName(const std::filesystem::path& file) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y%m%d-%H%M%S", &local);
    return file.native() + ".corrupt-" + stamp;
}

} // namespace

SettingsStore::SettingsStore(std::filesystem::path file) : file_{std::move(file)} {
    removeStaleTemporaryFiles();
    load();
}

// The temporary files of writes (GLib names them "<file>.XXXXXX") that were killed
// before their rename; a minute old, so that no write in progress loses its file.
void SettingsStore::removeStaleTemporaryFiles() const {
    const std::string prefix = file_.filename().native() + ".";
    constexpr std::size_t suffixLength = 6;
    std::error_code error;
    const auto now = std::filesystem::file_time_type::clock::now();
    for (const auto& entry : std::filesystem::directory_iterator{file_.parent_path(), error}) {
        const std::string name = entry.path().filename().native();
        if (name.size() != prefix.size() + suffixLength ||
            name.compare(0, prefix.size(), prefix) != 0)
            continue;
        const auto suffix = std::string_view{name}.substr(prefix.size());
        if (!std::all_of(suffix.begin(), suffix.end(), [](char c) { return g_ascii_isalnum(c); }))
            continue;
        std::error_code ignored;
        const auto written = entry.last_write_time(ignored);
        if (!ignored && entry.is_regular_file(ignored) && now - written > std::chrono::minutes{1})
            std::filesystem::remove(entry.path(), ignored);
    }
}

std::filesystem::path SettingsStore::defaultFile() {
    return std::filesystem::path{g_get_user_config_dir()} / "kelmo" / "settings";
}

void SettingsStore::load() {
    gchar* contents = nullptr;
    gsize length = 0;
    GError* rawError = nullptr;
    if (!g_file_get_contents(file_.c_str(), &contents, &length, &rawError)) {
        GErrorPtr error{rawError};
        const bool missing = g_error_matches(error.get(), G_FILE_ERROR, G_FILE_ERROR_NOENT);
        if (!missing)
            g_rename(file_.c_str(), corruptCopyName(file_).c_str());
        return;
    }
    GCharPtr text{contents};

    GVariant* parsed = nullptr;
    if (g_utf8_validate(text.get(), static_cast<gssize>(length), nullptr) &&
        std::strlen(text.get()) == length) {
        parsed = g_variant_parse(G_VARIANT_TYPE_VARDICT, text.get(), nullptr, nullptr, nullptr);
    }
    if (!parsed) {
        g_rename(file_.c_str(), corruptCopyName(file_).c_str());
        return;
    }
    const Glib::VariantBase dictionary = wrap(parsed);
    GVariantIter iter;
    g_variant_iter_init(&iter, raw(dictionary));
    const gchar* key = nullptr;
    GVariant* value = nullptr;
    while (g_variant_iter_next(&iter, "{&sv}", &key, &value))
        values_.insert_or_assign(std::string{key}, Glib::VariantBase{value, false});
}

void SettingsStore::save() {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    for (const auto& [key, value] : values_)
        g_variant_builder_add(&builder, "{sv}", key.c_str(), raw(value));
    const Glib::VariantBase dictionary = wrap(g_variant_builder_end(&builder));
    GCharPtr text{g_variant_print(raw(dictionary), TRUE)};

    const std::string directory = file_.parent_path().native();
    if (!directory.empty())
        g_mkdir_with_parents(directory.c_str(), 0700);
    // g_file_set_contents_full writes a temporary file and renames it.
    GError* rawError = nullptr;
    if (g_file_set_contents_full(file_.c_str(), text.get(), -1, G_FILE_SET_CONTENTS_CONSISTENT,
                                 0600, &rawError))
        return;
    GErrorPtr error{rawError};
    if (writeError_)
        return;
    writeError_ = error ? error->message : "the file could not be written";
    writeFailed_.emit(*writeError_);
}

Glib::VariantBase SettingsStore::value(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? Glib::VariantBase{} : found->second;
}

std::optional<std::vector<Glib::VariantBase>> SettingsStore::array(std::string_view key) const {
    const Glib::VariantBase list = value(key);
    if (!list || !g_variant_is_of_type(raw(list), G_VARIANT_TYPE_ARRAY) ||
        g_variant_is_of_type(raw(list), G_VARIANT_TYPE_DICTIONARY))
        return std::nullopt;
    std::vector<Glib::VariantBase> elements;
    const gsize count = g_variant_n_children(raw(list));
    elements.reserve(count);
    for (gsize i = 0; i < count; ++i)
        elements.push_back(unboxed(Glib::VariantBase{g_variant_get_child_value(raw(list), i)}));
    return elements;
}

std::optional<std::vector<std::string>> SettingsStore::stringArray(std::string_view key) const {
    const auto elements = array(key);
    if (!elements)
        return std::nullopt;
    std::vector<std::string> strings;
    strings.reserve(elements->size());
    for (const auto& element : *elements) {
        auto text = stringValue(element);
        if (!text)
            return std::nullopt;
        strings.push_back(std::move(*text));
    }
    return strings;
}

bool SettingsStore::boolValue(std::string_view key) const {
    const Glib::VariantBase stored = unboxed(value(key));
    if (!stored)
        return false;
    GVariant* v = raw(stored);
    if (g_variant_is_of_type(v, G_VARIANT_TYPE_BOOLEAN))
        return g_variant_get_boolean(v);
    if (g_variant_is_of_type(v, G_VARIANT_TYPE_INT32))
        return g_variant_get_int32(v) != 0;
    if (g_variant_is_of_type(v, G_VARIANT_TYPE_INT64))
        return g_variant_get_int64(v) != 0;
    if (g_variant_is_of_type(v, G_VARIANT_TYPE_DOUBLE))
        return g_variant_get_double(v) != 0.0;
    if (g_variant_is_of_type(v, G_VARIANT_TYPE_STRING)) {
        const gchar* text = g_variant_get_string(v, nullptr);
        return g_ascii_strcasecmp(text, "true") == 0 || g_ascii_strcasecmp(text, "yes") == 0 ||
               std::strcmp(text, "1") == 0;
    }
    return false;
}

void SettingsStore::set(std::string_view key, const Glib::VariantBase& value) {
    values_.insert_or_assign(std::string{key}, value);
    save();
}

void SettingsStore::setStringArray(std::string_view key, const std::vector<std::string>& strings) {
    const bool allText = std::all_of(strings.begin(), strings.end(), [](const std::string& text) {
        return g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr);
    });
    if (!allText) {
        // File names are bytes: those that are not UTF-8 are kept as bytestrings.
        std::vector<Glib::VariantBase> elements;
        elements.reserve(strings.size());
        for (const auto& text : strings)
            elements.push_back(makeStringVariant(text));
        set(key, makeArrayVariant(elements));
        return;
    }
    std::vector<const gchar*> pointers;
    pointers.reserve(strings.size());
    for (const auto& text : strings)
        pointers.push_back(text.c_str());
    set(key, wrap(g_variant_new_strv(pointers.data(), static_cast<gssize>(pointers.size()))));
}

void SettingsStore::setBool(std::string_view key, bool value) {
    set(key, wrap(g_variant_new_boolean(value)));
}

void SettingsStore::removeObject(std::string_view key) {
    const auto found = values_.find(key);
    if (found == values_.end())
        return;
    values_.erase(found);
    save();
}

Glib::VariantBase makeStringVariant(const std::string& text) {
    if (!g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr))
        return wrap(g_variant_new_bytestring(text.c_str()));
    return wrap(g_variant_new_string(text.c_str()));
}

Glib::VariantBase makeBytesVariant(const std::vector<std::uint8_t>& bytes) {
    return wrap(
        g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(), bytes.size(), sizeof(guint8)));
}

Glib::VariantBase makeDictionaryVariant(const std::map<std::string, Glib::VariantBase>& entries) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    for (const auto& [key, value] : entries)
        g_variant_builder_add(&builder, "{sv}", key.c_str(), raw(value));
    return wrap(g_variant_builder_end(&builder));
}

Glib::VariantBase makeArrayVariant(const std::vector<Glib::VariantBase>& elements) {
    if (elements.empty())
        return wrap(g_variant_new_array(G_VARIANT_TYPE_VARDICT, nullptr, 0));
    std::vector<GVariant*> children;
    children.reserve(elements.size());
    for (const auto& element : elements)
        children.push_back(raw(element));
    // Elements of one type make a typed array; mixed ones are boxed.
    const GVariantType* first = g_variant_get_type(children.front());
    bool uniform = true;
    for (GVariant* child : children)
        uniform = uniform && g_variant_type_equal(g_variant_get_type(child), first);
    if (uniform)
        return wrap(g_variant_new_array(nullptr, children.data(), children.size()));
    std::vector<GVariant*> boxed;
    boxed.reserve(children.size());
    for (GVariant* child : children)
        boxed.push_back(g_variant_new_variant(child));
    return wrap(g_variant_new_array(G_VARIANT_TYPE_VARIANT, boxed.data(), boxed.size()));
}

std::optional<std::map<std::string, Glib::VariantBase>>
dictionaryEntries(const Glib::VariantBase& value) {
    const Glib::VariantBase dictionary = unboxed(value);
    if (!dictionary || !g_variant_is_of_type(raw(dictionary), G_VARIANT_TYPE("a{s*}")))
        return std::nullopt;
    std::map<std::string, Glib::VariantBase> entries;
    const gsize count = g_variant_n_children(raw(dictionary));
    for (gsize i = 0; i < count; ++i) {
        Glib::VariantBase entry{g_variant_get_child_value(raw(dictionary), i)};
        Glib::VariantBase key{g_variant_get_child_value(raw(entry), 0)};
        Glib::VariantBase item{g_variant_get_child_value(raw(entry), 1)};
        entries.insert_or_assign(g_variant_get_string(raw(key), nullptr), unboxed(item));
    }
    return entries;
}

std::optional<std::string> stringValue(const Glib::VariantBase& value) {
    const Glib::VariantBase text = unboxed(value);
    if (!text)
        return std::nullopt;
    if (g_variant_is_of_type(raw(text), G_VARIANT_TYPE_STRING))
        return std::string{g_variant_get_string(raw(text), nullptr)};
    if (g_variant_is_of_type(raw(text), G_VARIANT_TYPE_BYTESTRING))
        return std::string{g_variant_get_bytestring(raw(text))};
    return std::nullopt;
}

std::optional<std::vector<std::uint8_t>> bytesValue(const Glib::VariantBase& value) {
    const Glib::VariantBase bytes = unboxed(value);
    if (!bytes || !g_variant_is_of_type(raw(bytes), G_VARIANT_TYPE_BYTESTRING))
        return std::nullopt;
    gsize length = 0;
    const auto* data =
        static_cast<const std::uint8_t*>(g_variant_get_fixed_array(raw(bytes), &length, 1));
    return std::vector<std::uint8_t>(data, data + length);
}

} // namespace kelmo
