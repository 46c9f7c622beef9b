#include "contract/contract_engine.h"

#include <unistd.h>

#include <cstdlib>

#include "defaults/store/connection_string.h"
#include "defaults/store/open_session.h"
#include "kxjob/automation_error.h"

namespace kxjob::testing_support {
namespace {

/// A database of a server, made and dropped on a session that is not in it.
class ServerStore : public ContractStore {
public:
    ServerStore(std::string server, const std::string& options, std::string dropping)
        : server_(std::move(server)), dropping_(std::move(dropping)) {
        OpenSession(server_)->Execute("CREATE DATABASE " + name_ + options);
    }
    ~ServerStore() override {
        try {
            OpenSession(server_)->Execute("DROP DATABASE " + name_ + dropping_);
        } catch (const AutomationError& error) {
            ADD_FAILURE() << error.Description();
        }
    }
    std::string ConnectionString() const override {
        std::string text;
        const kxjob::ConnectionString server(server_);
        for (const auto& [key, value] : server.Entries()) {
            if (key == "database") {
                text += "Database=" + name_ + ";";
            } else {
                text += key + "=" + (key == "driver" ? "{" + value + "}" : value) + ";";
            }
        }
        return text;
    }

private:
    static std::string NewName() {
        static int count = 0;
        return "kxtest_" + std::to_string(getpid()) + "_" + std::to_string(++count);
    }

    std::string server_;
    std::string dropping_;
    std::string name_ = NewName();
};

/// What a server's engine is and where it is.
ContractEngine Server(ContractEngine engine, const char* variable, const std::string& options,
                      const std::string& dropping) {
    const char* server = std::getenv(variable);
    if (server == nullptr) {
        engine.whyMissing = std::string(variable) + " names no server: eval \"$(script/stores start)\"";
        return engine;
    }
    engine.makeStore = [server = std::string(server), options, dropping] {
        return std::make_unique<ServerStore>(server, options, dropping);
    };
    return engine;
}

}  // namespace

ContractEngine PostgreSqlServer() {
    return Server(
        {.name = "PostgreSql",
         .provider = dspPostgreSql,
         .makeStore = {},
         .engineName = "PostgreSQL",
         .longText = "text",
         .sessionId = "SELECT pg_backend_pid()",
         .endSession = [](const std::string& id) { return "SELECT pg_terminate_backend(" + id + ")"; },
         .beBusy = "SELECT pg_sleep(60)",
         .countBusy = "SELECT COUNT(*) FROM pg_stat_activity WHERE wait_event = 'PgSleep'",
         .serverName = "postgresql"},
        "KXJOB_POSTGRESQL", "", " WITH (FORCE)");
}

ContractEngine MariaDbServer() {
    return Server(
        {.name = "MariaDb",
         .provider = dspMariaDb,
         .makeStore = {},
         .engineName = "MariaDB",
         .longText = "longtext",
         .sessionId = "SELECT CONNECTION_ID()",
         .endSession = [](const std::string& id) { return "KILL CONNECTION " + id; },
         .beBusy = "DO SLEEP(60)",
         .countBusy = "SELECT COUNT(*) FROM information_schema.processlist WHERE state = 'User sleep'",
         .serverName = "mariadb"},
        "KXJOB_MARIADB", " CHARACTER SET utf8mb4 COLLATE utf8mb4_nopad_bin", "");
}

std::vector<ContractEngine> EveryEngine() {
    std::vector<ContractEngine> engines = FileEngines();
    engines.push_back(PostgreSqlServer());
    engines.push_back(MariaDbServer());
    return engines;
}

std::string EngineName(const testing::TestParamInfo<ContractEngine>& info) {
    return info.param.name;
}

}  // namespace kxjob::testing_support
