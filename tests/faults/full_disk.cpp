#include "faults/full_disk.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/types.h>

#include <array>
#include <cerrno>

namespace kxjob::testing_support {
namespace {

// SQLite's own name for a call, and what stands in for it. Which of the three a build uses differs.
ssize_t NoRoom(int /*file*/, const void* /*bytes*/, size_t /*size*/) {
    errno = ENOSPC;
    return -1;
}

ssize_t NoRoomAt(int /*file*/, const void* /*bytes*/, size_t /*size*/, off_t /*offset*/) {
    errno = ENOSPC;
    return -1;
}

void Replace(const char* call, sqlite3_syscall_ptr by) {
    sqlite3_vfs* files = sqlite3_vfs_find(nullptr);
    if (files->xGetSystemCall(files, call) == nullptr) return;  // not used by this build
    EXPECT_EQ(files->xSetSystemCall(files, call, by), SQLITE_OK) << call;
}

}  // namespace

void FullDisk::Begin() {
    static_assert(sizeof(off_t) == 8, "pwrite and pwrite64 take the same");
    Replace("write", reinterpret_cast<sqlite3_syscall_ptr>(NoRoom));
    Replace("pwrite", reinterpret_cast<sqlite3_syscall_ptr>(NoRoomAt));
    Replace("pwrite64", reinterpret_cast<sqlite3_syscall_ptr>(NoRoomAt));
}

void FullDisk::End() {
    for (const char* call : {"write", "pwrite", "pwrite64"}) Replace(call, nullptr);
}

}  // namespace kxjob::testing_support
