#include <array>

#include "defaults/store/data_access_error.h"
#include "defaults/store/embedded_driver.h"
#include "defaults/store/engine.h"
#include "defaults/store/odbc/odbc_family.h"

namespace kxjob {
namespace {

[[noreturn]] void RefuseEmbedded() {
    RaiseConnectionFailed(
        "there is no embedded engine here; use an ODBC driver, such as "
        "\"Driver={SQLite3 ODBC Driver};Database=FILE\"");
}

std::unique_ptr<Session> RefuseToOpen(const ConnectionString& /*connection*/) {
    RefuseEmbedded();
}

void RefuseToCreate(const ConnectionString& /*connection*/) {
    RefuseEmbedded();
}

}  // namespace

std::span<const Engine> StoreEngines() {
    static const std::array engines = {Engine{NamesEmbeddedDriver, RefuseToOpen, RefuseToCreate},
                                       OdbcFamily()};
    return engines;
}

}  // namespace kxjob
