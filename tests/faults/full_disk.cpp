#include "faults/full_disk.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace kxjob::testing_support {
namespace {

int theRoom = 0;

/// Whether another write fits; else `errno` says why not.
bool Fits() {
    if (theRoom-- > 0) return true;
    errno = ENOSPC;
    return false;
}

// What stands in for the system's calls. Which of the three a build of SQLite uses differs.
ssize_t WriteOnFullDisk(int file, const void* bytes, size_t size) {
    return Fits() ? write(file, bytes, size) : -1;
}

ssize_t WriteAt(int file, const void* bytes, size_t size, off_t offset) {
    return Fits() ? pwrite(file, bytes, size, offset) : -1;
}

void Replace(const char* call, sqlite3_syscall_ptr by) {
    sqlite3_vfs* files = sqlite3_vfs_find(nullptr);
    if (files->xGetSystemCall(files, call) == nullptr) return;  // not used by this build
    EXPECT_EQ(files->xSetSystemCall(files, call, by), SQLITE_OK) << call;
}

}  // namespace

void FullDisk::Begin(int writesBefore) {
    theRoom = writesBefore;
    static_assert(sizeof(off_t) == 8, "pwrite and pwrite64 take the same");
    Replace("write", reinterpret_cast<sqlite3_syscall_ptr>(WriteOnFullDisk));
    Replace("pwrite", reinterpret_cast<sqlite3_syscall_ptr>(WriteAt));
    Replace("pwrite64", reinterpret_cast<sqlite3_syscall_ptr>(WriteAt));
}

void FullDisk::End() {
    for (const char* call : {"write", "pwrite", "pwrite64"}) Replace(call, nullptr);
}

}  // namespace kxjob::testing_support
