#pragma once

#include <string>

namespace kxjob {

/// GUIDs as text: "{8-4-4-4-12}", upper-case hex digits.
class GuidService {
public:
    virtual ~GuidService() = default;
    /// A GUID that no other call, process or machine gets.
    virtual std::string NewGuid() = 0;
    /// The GUID that stands for "none"; always the same text.
    virtual std::string NullGuid() = 0;
};

}  // namespace kxjob
