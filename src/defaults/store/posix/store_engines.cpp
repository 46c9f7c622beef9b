#include <array>

#include "defaults/store/engine.h"
#include "defaults/store/odbc/odbc_family.h"
#include "defaults/store/sqlite/sqlite_engine.h"

namespace kxjob {

std::span<const Engine> StoreEngines() {
    static const std::array engines = {SqliteEngine(), OdbcFamily()};
    return engines;
}

}  // namespace kxjob
