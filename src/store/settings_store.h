#pragma once

#include <filesystem>
#include <glibmm/variant.h>
#include <map>
#include <optional>
#include <sigc++/signal.h>
#include <string>
#include <string_view>
#include <vector>

namespace kelmo {

// Per-user key-value settings, kept in one file as a GVariant a{sv} dictionary in
// GVariant text form. Values are loosely typed: any key may hold any value, and the
// typed readers answer "nothing" for a value of another shape.
//
// Every write replaces the file atomically (temporary file, then rename). A missing
// file is an empty store; a file that cannot be parsed is moved aside as
// "<file>.corrupt-<time>" so nothing is lost, and the store starts empty. Temporary
// files left by writes that were killed are removed when the store opens. A write that
// fails is reported once, through signalWriteFailed, and remembered in writeError.
class SettingsStore {
public:
    explicit SettingsStore(std::filesystem::path file);

    // $XDG_CONFIG_HOME/kelmo/settings
    static std::filesystem::path defaultFile();

    // A list made only of strings ("as", or "av" whose elements are all strings or
    // bytestrings: file names that are not UTF-8 are stored as bytes).
    std::optional<std::vector<std::string>> stringArray(std::string_view key) const;
    // Any list (not a dictionary); boxed elements of "av" are unboxed.
    std::optional<std::vector<Glib::VariantBase>> array(std::string_view key) const;
    // False when absent; numbers count as true when non-zero, texts when "true", "yes" or "1".
    bool boolValue(std::string_view key) const;
    // The raw value, or an empty VariantBase when absent.
    Glib::VariantBase value(std::string_view key) const;

    void set(std::string_view key, const Glib::VariantBase& value);
    void setStringArray(std::string_view key, const std::vector<std::string>& strings);
    void setBool(std::string_view key, bool value);
    void removeObject(std::string_view key);

    const std::filesystem::path& file() const { return file_; }

    // Why the first write that failed did, once one has; later failures change nothing.
    const std::optional<std::string>& writeError() const { return writeError_; }
    sigc::signal<void(const std::string&)>& signalWriteFailed() { return writeFailed_; }

private:
    void load();
    void removeStaleTemporaryFiles() const;
    void save();

    std::filesystem::path file_;
    std::map<std::string, Glib::VariantBase, std::less<>> values_;
    std::optional<std::string> writeError_;
    sigc::signal<void(const std::string&)> writeFailed_;
};

// Builders and readers for the GVariant shapes that settings values take. A string
// that is not UTF-8 (a file name is bytes) is kept as a bytestring, and read back as one.
Glib::VariantBase makeStringVariant(const std::string& text);
Glib::VariantBase makeBytesVariant(const std::vector<std::uint8_t>& bytes);
Glib::VariantBase makeDictionaryVariant(const std::map<std::string, Glib::VariantBase>& entries);
Glib::VariantBase makeArrayVariant(const std::vector<Glib::VariantBase>& elements);

// A dictionary with string keys (any value type), its values unboxed; nothing otherwise.
std::optional<std::map<std::string, Glib::VariantBase>>
dictionaryEntries(const Glib::VariantBase& value);
std::optional<std::string> stringValue(const Glib::VariantBase& value);
std::optional<std::vector<std::uint8_t>> bytesValue(const Glib::VariantBase& value);

} // namespace kelmo
