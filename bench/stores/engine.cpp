#include "stores/engine.h"

#include <cstdlib>

namespace kxjob::bench {
namespace {

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

}  // namespace

std::vector<Engine> Engines() {
    const std::string chosen = Variable("KXJOB_BENCH_ENGINES");
    const auto isChosen = [&](const Engine& engine) {
        return chosen.empty() || chosen.find(engine.name) != std::string::npos;
    };
    std::vector<Engine> engines = {{"sqlite", dspSqlite}};
    if (const std::string server = Variable("KXJOB_POSTGRESQL"); !server.empty()) {
        engines.push_back({"postgresql", dspPostgreSql, server});
    }
    if (const std::string server = Variable("KXJOB_MARIADB"); !server.empty()) {
        engines.push_back({"mariadb", dspMariaDb, server});
    }
    std::erase_if(engines, [&](const Engine& engine) { return !isChosen(engine); });
    return engines;
}

bool IsQuick() {
    return !Variable("KXJOB_BENCH_QUICK").empty();
}

}  // namespace kxjob::bench
