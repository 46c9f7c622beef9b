#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

#include "kxjob/array.h"
#include "kxjob/data_store_provider.h"
#include "kxjob/job_helper.h"
#include "kxjob/store.h"
#include "kxjob/value.h"

namespace {

void Require(bool condition, const char* what) {
    if (!condition) throw std::runtime_error(what);
}

void UseLibrary(const std::string& databaseFile) {
    kxjob::JobHelper helper;
    Require(helper.Version() == "8.3.1202.0", "Version() is not 8.3.1202.0");
    Require(helper.IsJobComplete("COMPLETE"), "COMPLETE is not complete");
    Require(!helper.IsJobComplete("RUNNING"), "RUNNING is complete");

    const std::string connection = "Driver=SQLite;Database=" + databaseFile;
    kxjob::Store store(connection, kxjob::dspSqlite, "kx_");
    store.CreateDatabase();
    store.CreateTables();
    store.Execute(
        "INSERT INTO kx_JobType (jobtypeid, description, implprogid, notificationprogid) "
        "VALUES ('NIGHTLY', 'Nightly totals', 'Totals_83.Nightly', '')");
    Require(store.Query("SELECT jobtypeid FROM kx_JobType WHERE jobtypeid = 'WEEKLY'").IsEmpty(),
            "the store has a job type that nobody wrote");

    const kxjob::Value types = helper.GetJobType(connection, kxjob::dspSqlite, "kx_");
    Require(types.IsRowArray() && types.Rows().Rows() == 1, "not exactly one job type was read");
    Require(types.Rows().Cell(0, 0) == kxjob::Value("NIGHTLY"), "the job type read is not the one written");
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "usage: consumer DATABASE_FILE\n";
        return 2;
    }
    try {
        UseLibrary(arguments[1]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    std::cout << "the installed library works\n";
    return 0;
}
