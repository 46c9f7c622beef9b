#pragma once

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "kxjob/array.h"
#include "kxjob/call_journal.h"

namespace kxjob::testing_support {

/// A value as expectations write it: 'text', 5, 0.5d, True, Null, Empty, <object>, [a, b], rows[a b; c d].
inline std::string ValueText(const Value& value) {
    if (value.IsEmpty()) return "Empty";
    if (value.IsNull()) return "Null";
    if (value.IsText()) return "'" + value.Text() + "'";
    if (value.IsDouble()) return value.ToText() + "d";
    if (value.IsObject()) return "<" + value.Object()->Name() + ">";
    std::string text;
    if (value.IsRowArray()) {
        const RowArray& rows = value.Rows();
        for (std::int32_t row = 0; row < rows.Rows(); ++row) {
            text += row == 0 ? "" : "; ";
            for (std::int32_t column = 0; column < rows.Columns(); ++column) {
                text += (column == 0 ? "" : " ") + ValueText(rows.Cell(column, row));
            }
        }
        return "rows[" + text + "]";
    }
    if (value.IsGeneralArray()) {
        const Array::Dimension range = value.General().Dimensions().front();
        for (std::int32_t i = range.lowerBound; i < range.lowerBound + range.count; ++i) {
            text += (text.empty() ? "" : ", ") + ValueText(value.General().At(i));
        }
        return "[" + text + "]";
    }
    return value.ToText();
}

/// An event on one line, e.g. "CreateJob:12 InputGuard.CheckParameter('kx_', 'NameQualifier')".
inline std::string EventText(const JournalEvent& event) {
    std::string arguments;
    for (const Value& argument : event.arguments) {
        arguments += (arguments.empty() ? "" : ", ") + ValueText(argument);
    }
    for (const auto& [name, argument] : event.named) {
        arguments += (arguments.empty() ? "" : ", ") + name + "=" + ValueText(argument);
    }
    std::string text;
    switch (event.kind) {
        case JournalEvent::Kind::Enter: text = "enter " + event.method + "(" + arguments + ")"; break;
        case JournalEvent::Kind::Leave: text = "leave " + event.method + "(" + arguments + ")"; break;
        case JournalEvent::Kind::Raise: text = "raise " + event.method; break;
        case JournalEvent::Kind::Call:
            text = event.method + ":" + std::to_string(event.line) + " " + event.object + "." +
                   event.operation + "(" + arguments + ")";
            break;
    }
    if (event.result) text += " = " + ValueText(*event.result);
    if (event.error) text += " ! " + std::to_string(event.error->Number()) + " " + event.error->Description();
    return text;
}

/// Keeps the events as texts.
class KeepingSink : public JournalSink {
public:
    void Write(const JournalEvent& event) override { events.push_back(EventText(event)); }

    std::vector<std::string> events;
};

}  // namespace kxjob::testing_support
