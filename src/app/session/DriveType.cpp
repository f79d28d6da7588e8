#include "DriveType.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

namespace {

// mountinfo escapes blanks and the like as octal "\040".
std::string unescapeMountField(const std::string& field) {
    std::string out;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size()) {
            const std::string digits = field.substr(i + 1, 3);
            if (digits.find_first_not_of("01234567") == std::string::npos) {
                out += static_cast<char>(std::stoi(digits, nullptr, 8));
                i += 3;
                continue;
            }
        }
        out += field[i];
    }
    return out;
}

bool isBelow(const std::string& path, const std::string& mountPoint) {
    if (mountPoint == "/") return !path.empty() && path[0] == '/';
    return path == mountPoint || (path.size() > mountPoint.size() && path.compare(0, mountPoint.size(), mountPoint) == 0 &&
                                  path[mountPoint.size()] == '/');
}

}  // namespace

MountEntry MountOfPath(const std::string& path, const std::string& mountinfoText) {
    MountEntry best;
    std::istringstream lines(mountinfoText);
    std::string line;
    while (std::getline(lines, line)) {
        // id parent major:minor root mountpoint options [optional...] - fstype source superoptions
        std::istringstream words(line);
        std::vector<std::string> fields;
        for (std::string word; words >> word;) fields.push_back(word);
        std::size_t dash = 0;
        while (dash < fields.size() && fields[dash] != "-") ++dash;
        if (fields.size() < 5 || dash + 2 >= fields.size()) continue;
        const std::string mountPoint = unescapeMountField(fields[4]);
        if (!isBelow(path, mountPoint) || mountPoint.size() < best.mountPoint.size()) continue;
        best = MountEntry{mountPoint, unescapeMountField(fields[dash + 2]), fields[dash + 1]};
    }
    return best;
}

DriveKind DriveKindOf(const MountEntry& mount, const std::string& sysClassBlock) {
    if (mount.mountPoint.empty()) return DriveKind::NoRootDir;
    static const char* const remote[] = {"nfs", "nfs4", "cifs", "smb3", "smbfs", "fuse.sshfs", "9p", "afs"};
    for (const char* type : remote)
        if (mount.fsType == type) return DriveKind::Remote;
    if (mount.device.rfind("/dev/", 0) != 0) return DriveKind::Fixed;
    std::error_code ec;
    const std::filesystem::path device =
        std::filesystem::canonical(sysClassBlock + std::filesystem::path(mount.device).filename().string(), ec);
    if (ec) return DriveKind::Fixed;
    return device.string().find("/usb") != std::string::npos ? DriveKind::Removable : DriveKind::Fixed;
}

DriveKind DriveTypeOf(const std::string& path) {
    std::ifstream in("/proc/self/mountinfo");
    std::ostringstream text;
    text << in.rdbuf();
    std::error_code ec;
    const std::string absolute = std::filesystem::weakly_canonical(std::filesystem::absolute(path, ec), ec).string();
    return DriveKindOf(MountOfPath(absolute, text.str()));
}

const char* DriveKindName(DriveKind kind) {
    switch (kind) {
    case DriveKind::Remote: return "DRIVE_REMOTE";
    case DriveKind::NoRootDir: return "DRIVE_NO_ROOT_DIR";
    case DriveKind::Removable: return "DRIVE_REMOVABLE";
    case DriveKind::Fixed: return "DRIVE_FIXED";
    }
    return "DRIVE_FIXED";
}
