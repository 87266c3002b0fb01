#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <variant>

namespace gull {

/// The JSON file behind the settings: one object with a value for each key. Read once. Writing a value
/// replaces that key in the file's current contents, so other keys, known or not, keep what another program
/// gave them.
///
/// Errors in the file are reported, and the rest of it still counts. Text that is not a JSON object, or is
/// nested more than 64 deep, is set aside as `<file>.damaged` before the first write. A file that cannot be
/// read or set aside is not written; a failed write is tried again with the next value and at the end. Each
/// of these is reported once.
class SettingsFile {
  public:
    using Value = std::variant<bool, std::int64_t, std::string>;

    /// With an empty path nothing is read or stored.
    explicit SettingsFile(std::filesystem::path file);
    ~SettingsFile();
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    // The value of `key` when the file was read, or `otherwise` if it had none.

    /// A number is on unless it is 0; a text is on if it begins like "yes", "true" or a number other than 0;
    /// everything else is off.
    bool read(const std::string& key, bool otherwise) const;
    /// Clamped to `least` and `most`.
    std::int64_t read(const std::string& key, std::int64_t otherwise, std::int64_t least,
                      std::int64_t most) const;
    std::string read(const std::string& key, const std::string& otherwise) const;

    /// Invalid UTF-8 in a text is replaced.
    void write(const std::string& key, Value value);

  private:
    struct Document;

    void writeWhatIsOwed();
    bool putInFile();
    void complain(const std::string& what) const;
    void complainOnce(const std::string& what);

    std::filesystem::path file_;
    std::unique_ptr<Document> document_;  // as read at the start
    std::map<std::string, Value> owed_;   // not yet in the file
    bool hasComplained_ = false;          // about a write
};

}  // namespace gull
