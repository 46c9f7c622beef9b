#include "defaults/store/embedded_driver.h"

#include "automation/letter_case.h"

namespace kxjob {

bool NamesEmbeddedDriver(const ConnectionString& connection) {
    return FoldedCase(connection.Value("Driver")) == "sqlite";
}

}  // namespace kxjob
