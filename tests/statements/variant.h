#pragma once

#include <functional>
#include <string>
#include <vector>

#include "work/protocol/job_store.h"

namespace kxjob::testing_support {

// Arguments whose values are not in support/every_method.h. Each is different from all others, so that it can
// be found in a statement again.
inline constexpr const char* kAnyJobState = "a job state";
inline constexpr const char* kAnyItemState = "an item state";
inline constexpr const char* kAnyTaskState = "a task state";
inline constexpr const char* kAnyState = "a state";
inline constexpr std::int32_t kAnyProcess = 7101;
inline constexpr std::int32_t kAnyThread = 7102;
inline constexpr std::int32_t kAnyItemCount = 7103;
inline constexpr std::int32_t kAnySequence = 7104;
/// The number of the item that hosts work on; statements of a variant's circumstances write it out.
inline constexpr std::int32_t kItemSequence = 7200;

/// The store that a variant is called on, with the rows of seeded/seeded_store.h.
struct VariantStore {
    JobHelper& jobs;
    command::JobStore& host;
    std::string connectionString;
    DataStoreProvider provider;
    std::string qualifier;
};

/// One call of a method, under circumstances that may lead to statements of its own.
struct Variant {
    std::string method;
    /// What is so in this call and not in each call of the method, in the reader's words.
    std::vector<std::string> conditions;
    /// Statements that make it so.
    std::vector<std::string> before;
    std::function<void(const VariantStore& store)> call;
    /// Whether the method raises an error of its own in the end.
    bool raises = false;
};

/// Methods of one subject.
struct Family {
    std::string title;
    /// In the order of the document; the private ones too.
    std::vector<std::string> methods;
    std::vector<Variant> variants;
};

Family VocabularyFamily();
Family TaskFamily();
Family LifecycleFamily();
Family QueryFamily();
Family StatisticsFamily();
Family StatusFamily();
Family SchedulingFamily();
/// The functions by which hosts share a store.
Family HostFamily();

std::vector<Family> EveryFamily();

void Append(std::vector<Variant>& variants, const std::vector<Variant>& more);

}  // namespace kxjob::testing_support
