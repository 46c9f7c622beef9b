#pragma once

#include <map>
#include <string>
#include <string_view>

#include "automation/runtime_error.h"
#include "collaborators/array_inspector.h"
#include "collaborators/keyed_collection.h"
#include "collaborators/sql_formatter.h"
#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "kxjob/component.h"

namespace kxjob::testing_support {

/// Literals that show which of the two operations made them: V(x) and G(x); NULL for Null and Empty.
class FakeSqlFormatter : public SqlFormatter {
public:
    std::string FormatValue(const Value& value) override {
        return value.IsNull() || value.IsEmpty() ? "NULL" : "V(" + value.ToText() + ")";
    }
    std::string FormatGuid(const std::string& guid) override { return "G(" + guid + ")"; }
};

class FakeArrayInspector : public ArrayInspector {
public:
    std::int32_t LowerBound(const Value& array) override {
        return array.IsGeneralArray() ? array.General().Dimensions().back().lowerBound : 0;
    }
    std::int32_t UpperBound(const Value& array) override {
        if (array.IsEmpty()) return -1;
        if (array.IsRowArray()) return array.Rows().Rows() - 1;
        const Array::Dimension last = array.General().Dimensions().back();
        return last.lowerBound + last.count - 1;
    }
    std::int32_t ElementCount(const Value& array) override {
        return static_cast<std::int32_t>(array.General().ElementCount());
    }
    std::int32_t DimensionCount(const Value& array) override {
        return array.IsRowArray() ? 2 : static_cast<std::int32_t>(array.General().Dimensions().size());
    }
};

class FakeKeyedCollection : public KeyedCollection {
public:
    void Add(const Value& item, const std::string& key) override {
        if (!items_.emplace(key, item).second) RaiseRuntimeError(error_number::kDuplicateKey);
    }
    bool Exists(const std::string& key) override { return items_.contains(key); }
    Value Item(const std::string& key) override {
        if (!Exists(key)) RaiseRuntimeError(error_number::kInvalidCall);
        return items_.at(key);
    }

private:
    std::map<std::string, Value> items_;
};

/// The table-name component: each property gives its own name.
class FakeTableNameHelper : public Component {
public:
    std::string Name() const override { return "TableNameHelper"; }
    Value Get(std::string_view property) override {
        if (property == "job" || property == "JobItem" || property == "jobtask" || property == "JobType") {
            return property;
        }
        return Component::Get(property);
    }
};

/// What the error-logging component must do: remembers what it was told, and raises the error again.
class FakeDebugTools : public Component {
public:
    struct Told {
        std::int32_t number;
        std::string source;
        std::string description;
        std::string applicationTitle;
        std::int32_t line;
        std::string project;
        std::string className;
        std::string method;
    };

    std::string Name() const override { return "DebugTools_83.Helper"; }
    Value Call(std::string_view method, std::span<const Value> arguments) override {
        if (method != "LogAndReRaiseVBError") return Component::Call(method, arguments);
        RequireArguments(method, arguments, 6);
        Component& error = *arguments[0].Object();
        told.push_back({error.Get("Number").ToInt32(), error.Get("Source").ToText(),
                        error.Get("Description").ToText(), arguments[1].Object()->Get("Title").ToText(),
                        arguments[2].ToInt32(), arguments[3].ToText(), arguments[4].ToText(),
                        arguments[5].ToText()});
        if (returnsInsteadOfRaising) return {};
        throw AutomationError(told.back().number, told.back().source, told.back().description,
                              told.back().line);
    }

    std::vector<Told> told;
    bool returnsInsteadOfRaising = false;
};

}  // namespace kxjob::testing_support
