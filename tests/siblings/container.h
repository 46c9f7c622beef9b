#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "defaults/store/session_cache.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/component.h"
#include "kxjob/value.h"

namespace kxjob::testing_support {

/// A container's store on an empty SQLite database, as the stand-ins see it.
class Container {
public:
    const std::shared_ptr<SessionCache>& Sessions() const { return sessions_; }
    std::string ConnectionString() const { return database_.ConnectionString(); }

    void Execute(const std::string& sql) {
        sessions_->Use(ConnectionString(), [&](Session& session) { session.Execute(sql); });
    }
    Value Query(const std::string& sql) {
        return sessions_->Use(ConnectionString(), [&](Session& session) { return session.Query(sql); });
    }

private:
    TemporaryDatabase database_;
    std::shared_ptr<SessionCache> sessions_ = std::make_shared<SessionCache>();
};

inline Value Call(Component& component, std::string_view method, const std::vector<Value>& arguments) {
    return component.Call(method, arguments);
}

}  // namespace kxjob::testing_support
