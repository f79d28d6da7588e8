// What kind of storage a path lies on, found from the mount table: the
// removable-stick rule of the user folder and the network-drive flag of a
// model need it.
#pragma once

#include <string>

enum class DriveKind { NoRootDir, Removable, Fixed, Remote };

// The mount point that holds path ("" when none does) and its device and
// file system type, from a mountinfo text ("/proc/self/mountinfo").
struct MountEntry {
    std::string mountPoint;
    std::string device;
    std::string fsType;
};
MountEntry MountOfPath(const std::string& path, const std::string& mountinfoText);

// Network file systems count as remote; a block device whose place in
// /sys runs over USB as removable; a device that can't be looked up as fixed.
DriveKind DriveKindOf(const MountEntry& mount, const std::string& sysClassBlock = "/sys/class/block/");

// The same for a path on this machine.
DriveKind DriveTypeOf(const std::string& path);

// "DRIVE_REMOTE" and its kin, as the run log names them.
const char* DriveKindName(DriveKind kind);
