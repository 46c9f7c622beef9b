#include "defaults/store/store_test_support.h"

#include <gtest/gtest.h>

#include <fstream>

#include "defaults/store/create_database_file.h"
#include "kxjob/array.h"

namespace kxjob::testing_support {

TemporaryDatabase::TemporaryDatabase() {
    CreateDatabaseFile(ConnectionString());
}

Value Rows(const std::vector<std::vector<Value>>& rows) {
    RowArray array(static_cast<std::int32_t>(rows.at(0).size()));
    for (const std::vector<Value>& row : rows) array.AddRow(row);
    return array;
}

void Overwrite(const std::string& file, std::streamoff offset, const std::string& bytes) {
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    stream.seekp(offset);
    stream << bytes;
    stream.flush();
    ASSERT_TRUE(stream.good()) << file;
}

}  // namespace kxjob::testing_support
