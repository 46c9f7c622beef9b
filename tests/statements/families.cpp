#include <algorithm>

#include "statements/variant.h"
#include "support/every_method.h"

namespace kxjob::testing_support {

/// These send nothing: their usual call shows it.
Family VocabularyFamily() {
    Family family{.title = "Vocabulary and creation script",
                  .methods = {"Version", "IsJobComplete", "IsJobRunning", "ParametersTagName",
                              "ParameterTagName", "JobTableCreationScript"},
                  .variants = {}};
    for (const MethodCall& method : EveryMethod()) {
        if (std::find(family.methods.begin(), family.methods.end(), method.name) == family.methods.end()) {
            continue;
        }
        family.variants.push_back({.method = method.name,
                                   .conditions = {},
                                   .before = {},
                                   .call = [call = method.call](const VariantStore& store) {
                                       call(store.jobs, store.connectionString, store.provider,
                                            store.qualifier);
                                   }});
    }
    return family;
}

void Append(std::vector<Variant>& variants, const std::vector<Variant>& more) {
    variants.insert(variants.end(), more.begin(), more.end());
}

std::vector<Family> EveryFamily() {
    return {VocabularyFamily(), TaskFamily(),   LifecycleFamily(),  QueryFamily(),
            StatisticsFamily(), StatusFamily(), SchedulingFamily(), HostFamily()};
}

}  // namespace kxjob::testing_support
