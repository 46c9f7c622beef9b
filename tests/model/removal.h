#pragma once

#include <functional>

#include "model/model_tables.h"

namespace kxjob::model {

/// Removes these jobs with their items and tasks, and writes it into the history.
void RemoveJobs(Tables& tables, const std::function<bool(const Row&)>& which);

}  // namespace kxjob::model
