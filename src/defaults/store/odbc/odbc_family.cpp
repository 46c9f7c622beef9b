#include "defaults/store/odbc/odbc_family.h"

#include "defaults/store/odbc/odbc_connection.h"
#include "defaults/store/odbc/odbc_connection_string.h"
#include "defaults/store/odbc/odbc_session.h"

namespace kxjob {
namespace {

std::unique_ptr<Session> Open(const ConnectionString& connection) {
    return std::make_unique<OdbcSession>(OdbcConnectionString(connection));
}

void Create(const ConnectionString& connection) {
    if (DriverMakesFiles(connection)) OdbcSession(OdbcCreatingConnectionString(connection));
}

}  // namespace

Engine OdbcFamily() {
    return {IsForOdbc, Open, Create};
}

}  // namespace kxjob
