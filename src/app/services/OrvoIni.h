// The settings file "Orvo.ini": sections and keys as written, keys with
// blanks ("Last Folder") kept as they are.
#pragma once

#include <memory>
#include <string>

class OrvoIni {
public:
    OrvoIni();
    ~OrvoIni();
    // Reads the file; a missing file gives empty settings and false.
    bool load(const std::string& path);
    // Writes the settings back through a temporary file; false on failure.
    bool save() const;
    std::string readString(const std::string& section, const std::string& key, const std::string& fallback) const;
    void writeString(const std::string& section, const std::string& key, const std::string& value);
    const std::string& path() const { return path_; }

private:
    struct Store;
    std::unique_ptr<Store> store_;
    std::string path_;
};

// The session's settings object.
OrvoIni& ORVOINI();
void resetOrvoIni();
