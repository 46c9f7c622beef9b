#pragma once

#include <string>
#include <vector>

#include "files/temporary_folder.h"
#include "kxjob/value.h"
#include "support/raised_error.h"

namespace kxjob::testing_support {

/// An empty SQLite database in a folder of its own.
class TemporaryDatabase {
public:
    TemporaryDatabase();

    std::string File() const { return folder_.Path("store.db").string(); }
    std::string ConnectionString() const { return "Driver=SQLite;Database=" + File(); }
    const TemporaryFolder& Folder() const { return folder_; }

private:
    TemporaryFolder folder_;
};

/// A row array from its rows.
Value Rows(const std::vector<std::vector<Value>>& rows);

/// Writes bytes over those of a file from `offset` on.
void Overwrite(const std::string& file, std::streamoff offset, const std::string& bytes);

}  // namespace kxjob::testing_support
