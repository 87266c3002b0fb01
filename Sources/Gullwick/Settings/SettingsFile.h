#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <variant>

namespace gull {

/// The JSON file behind the settings: one object, a value for each key. Read once; a value that is written
/// goes over what is on disk then, so that other keys, known or not, keep what another program gave them.
///
/// What is wrong with the file is told and the rest of it still counts. Text that is no JSON object, or one
/// nested more than 64 deep, is set aside as `<file>.damaged` before the first write. A file that cannot be
/// read is not written, and neither is one that cannot be set aside; what could not be written is tried again
/// with the next value and at the end. All of that is told once.
class SettingsFile {
  public:
    using Value = std::variant<bool, std::int64_t, std::string>;

    /// An empty path: nothing is read or kept.
    explicit SettingsFile(std::filesystem::path file);
    ~SettingsFile();
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    // What stood under `key` when the file was read, or `otherwise` when nothing did.

    /// A number is on unless it is 0, a text when it begins like "yes", "true" or a number that is not 0; all
    /// else is off.
    bool read(const std::string& key, bool otherwise) const;
    /// From `least` to `most`: what lies beyond becomes the nearer of them.
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
