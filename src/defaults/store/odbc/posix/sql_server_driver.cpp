#include "defaults/store/odbc/sql_server_driver.h"

namespace kxjob {

std::string_view SqlServerDriver(std::string_view /*provider*/) {
    return "FreeTDS";
}

}  // namespace kxjob
