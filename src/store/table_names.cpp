#include "store/table_names.h"

#include <utility>

namespace kxjob {

TableNames::TableNames(Frame& frame, std::string nameQualifier, Frame::Place place)
    : helper_(frame.CreateVersioned("TableNameHelper_%v.TableNameHelper", place)),
      nameQualifier_(std::move(nameQualifier)) {}

std::string TableNames::Base(const char* table, Frame::Place place) const {
    return helper_.Get(table, place).ToText();
}

}  // namespace kxjob
