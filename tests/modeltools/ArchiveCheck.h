// Archives read back for the packing tests: libzip with its consistency
// check, and Info-ZIP's own integrity test as a second, independent reader.
#pragma once

#include <gtest/gtest.h>
#include <zip.h>

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

struct ArchiveEntry {
    std::string data;
    int method = -1;
};

// The entries by name; empty when the archive can't be read.
inline std::map<std::string, ArchiveEntry> readArchive(const std::string& path) {
    std::map<std::string, ArchiveEntry> entries;
    int error = 0;
    zip_t* archive = zip_open(path.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &error);
    if (!archive) return entries;
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
        zip_stat_t st;
        zip_stat_index(archive, zip_uint64_t(i), 0, &st);
        ArchiveEntry entry;
        entry.method = st.comp_method;
        entry.data.resize(st.size);
        zip_file_t* file = zip_fopen_index(archive, zip_uint64_t(i), 0);
        if (file && zip_fread(file, entry.data.data(), st.size) == zip_int64_t(st.size)) entries[st.name] = entry;
        if (file) zip_fclose(file);
    }
    zip_close(archive);
    return entries;
}

inline std::vector<std::string> entryNames(const std::map<std::string, ArchiveEntry>& entries) {
    std::vector<std::string> result;
    for (const auto& [name, entry] : entries) result.push_back(name);
    return result;
}

inline bool unzipAccepts(const std::string& path) {
    if (std::system("command -v unzip > /dev/null 2>&1") != 0) {
        ADD_FAILURE() << "the unzip program is needed (Debian package unzip)";
        return false;
    }
    return std::system(("unzip -tq '" + path + "' > /dev/null 2>&1").c_str()) == 0;
}
