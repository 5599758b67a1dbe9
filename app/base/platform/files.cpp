#include "app/base/platform/files.h"

#include <algorithm>
#include <array>

namespace platform {

bool isNetworkFileSystem(QByteArrayView kind) {
    static constexpr std::array<QByteArrayView, 22> known = {
        "nfs",   "nfs4",   "cifs",   "smb2",      "smb3",       "smbfs",    "smbnetfs",    "sshfs",
        "ncpfs", "afs",    "coda",   "ceph",      "9p",         "vboxsf",   "vmhgfs-fuse", "prl_fs",
        "davfs", "davfs2", "rclone", "glusterfs", "gvfsd-fuse", "curlftpfs"};
    const QByteArrayView bridge = "fuse.";
    return std::ranges::find(known, kind.startsWith(bridge) ? kind.sliced(bridge.size()) : kind) !=
           known.end();
}

} // namespace platform
