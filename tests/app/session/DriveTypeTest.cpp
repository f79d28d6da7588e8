// Where a path lies: the mount table read by hand-written lines, and the
// kinds of storage the user folder and the model's drive flag depend on.
#include <gtest/gtest.h>

#include <filesystem>

#include "app/session/DriveType.h"
#include "app/session/StartupState.h"
#include "app/session/UserFolders.h"
#include "app/services/SessionPaths.h"
#include "support/TestSupport.h"

namespace {

const char* MOUNTINFO =
    "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
    "40 22 8:17 / /media/stick\\040one rw,nosuid - vfat /dev/sdb1 rw,uid=1000\n"
    "41 22 0:50 / /mnt/share rw - nfs4 server:/export rw,vers=4.2\n"
    "42 22 0:51 / /mnt/sharedata rw - ext4 /dev/sdc1 rw\n";

}  // namespace

TEST(DriveType, TheLongestMountPointHoldingThePathWins) {
    EXPECT_EQ(MountOfPath("/home/noa/site/m.obj", MOUNTINFO).device, "/dev/sda1");
    const MountEntry stick = MountOfPath("/media/stick one/zv/zorvex64", MOUNTINFO);
    EXPECT_EQ(stick.mountPoint, "/media/stick one");
    EXPECT_EQ(stick.device, "/dev/sdb1");
    EXPECT_EQ(stick.fsType, "vfat");
    // A mount point that is only a prefix of a name does not hold the path.
    EXPECT_EQ(MountOfPath("/mnt/sharedata/m.obj", MOUNTINFO).fsType, "ext4");
    EXPECT_EQ(MountOfPath("/mnt/share/m.obj", MOUNTINFO).fsType, "nfs4");
    EXPECT_EQ(MountOfPath("relative/m.obj", MOUNTINFO).mountPoint, "");
}

TEST(DriveType, NetworkUsbAndOtherDevicesAreTold) {
    testsupport::ScratchDir sys;
    namespace fs = std::filesystem;
    fs::create_directories(sys.path("devices/pci0000:00/usb1/1-1/block/sdb/sdb1"));
    fs::create_directories(sys.path("devices/pci0000:00/ata1/block/sda/sda1"));
    fs::create_directories(sys.path("class/block"));
    fs::create_directory_symlink(sys.path("devices/pci0000:00/usb1/1-1/block/sdb/sdb1"), sys.path("class/block/sdb1"));
    fs::create_directory_symlink(sys.path("devices/pci0000:00/ata1/block/sda/sda1"), sys.path("class/block/sda1"));
    const std::string block = sys.path("class/block/");
    EXPECT_EQ(DriveKindOf(MountOfPath("/media/stick one/x", MOUNTINFO), block), DriveKind::Removable);
    EXPECT_EQ(DriveKindOf(MountOfPath("/home/x", MOUNTINFO), block), DriveKind::Fixed);
    EXPECT_EQ(DriveKindOf(MountOfPath("/mnt/share/x", MOUNTINFO), block), DriveKind::Remote);
    // A device that can't be looked up counts as no stick.
    EXPECT_EQ(DriveKindOf(MountOfPath("/mnt/sharedata/x", MOUNTINFO), block), DriveKind::Fixed);
    EXPECT_EQ(DriveKindOf(MountEntry{}, block), DriveKind::NoRootDir);
}

TEST(UserFolders, AStickKeepsTheUserTreeBesideTheProgram) {
    resetSessionPaths();
    resetStartupState();
    DeriveUserFolders("/home/noa", "/media/stick/zv/zorvex64", true);
    EXPECT_EQ(sessionPaths().USERFOLDER, "/media/stick/zv/");
    EXPECT_EQ(sessionPaths().ORVO_, "/media/stick/zv/Orvo_/");
    DeriveUserFolders("/home/noa", "/opt/zv/bin/zorvex64", false);
    EXPECT_EQ(sessionPaths().USERFOLDER, "/home/noa/");
    EXPECT_EQ(sessionPaths().ORVO_T, "/home/noa/Orvo_/TMP/");
    EXPECT_EQ(startupState().ImagesFolder, "/home/noa/Orvo_/TMP/Temp/");
    EXPECT_EQ(startupState().MONITOREDFOLDER, "/home/noa/Orvo_/JFR/");
    EXPECT_EQ(startupState().ORVOINIFILENAME, "/home/noa/Orvo_/Orvo.ini");
    SetInstallationPaths("/opt/zv/bin/zorvex64");
    EXPECT_EQ(sessionPaths().CTQ_Path, "/opt/zv/data/");
}
