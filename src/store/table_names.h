#pragma once

#include <string>

#include "frame/frame.h"

namespace kxjob {

/// The names of the four tables, asked of the table-name component each time: the qualifier followed directly
/// by the base name.
class TableNames {
public:
    TableNames(Frame& frame, std::string nameQualifier, Frame::Place place = Frame::Place::current());

    std::string job(Frame::Place place = Frame::Place::current()) const { return Qualified("job", place); }
    std::string JobItem(Frame::Place place = Frame::Place::current()) const {
        return Qualified("JobItem", place);
    }
    std::string jobtask(Frame::Place place = Frame::Place::current()) const {
        return Qualified("jobtask", place);
    }
    std::string JobType(Frame::Place place = Frame::Place::current()) const {
        return Qualified("JobType", place);
    }

    /// The base name alone, for one of these four.
    std::string Base(const char* table, Frame::Place place = Frame::Place::current()) const;

private:
    std::string Qualified(const char* table, Frame::Place place) const {
        return nameQualifier_ + Base(table, place);
    }

    LateObject helper_;
    std::string nameQualifier_;
};

}  // namespace kxjob
