#include "proof/proof_output.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace kxjob::testing_support {

void Prove(const std::string& what, int count, int least) {
    std::cout << "proof: " << what << ": " << count << " (least " << least << ")\n";
    EXPECT_GE(count, least) << what;
}

void WriteProof(const std::string& name, const std::string& text) {
    const char* folder = std::getenv("KXJOB_PROOF");
    if (folder == nullptr) return;
    std::ofstream file(std::filesystem::path(folder) / (name + ".md"));
    file << text;
    file.flush();
    EXPECT_TRUE(file.good()) << folder << "/" << name << ".md";
}

}  // namespace kxjob::testing_support
