#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace kxjob {

/// A session's prepared statements by the text of their shape. When there is no room for one more, the one
/// goes that was not asked for longest.
template <typename Statement>
class KeptStatements {
public:
    /// Null when there is none. It stays where it is until it goes.
    Statement* Find(const std::string& text) {
        const auto place = places_.find(text);
        if (place == places_.end()) return nullptr;
        latestFirst_.splice(latestFirst_.begin(), latestFirst_, place->second);
        return &place->second->second;
    }

    /// There must be none with this text.
    Statement& Keep(const std::string& text, Statement statement) {
        if (latestFirst_.size() == kRoom) {
            places_.erase(latestFirst_.back().first);
            latestFirst_.pop_back();
        }
        latestFirst_.emplace_front(text, std::move(statement));
        places_.emplace(latestFirst_.front().first, latestFirst_.begin());
        return latestFirst_.front().second;
    }

    void Drop(const std::string& text) {
        const auto place = places_.find(text);
        const auto statement = place->second;
        places_.erase(place);
        latestFirst_.erase(statement);
    }

private:
    static constexpr std::size_t kRoom = 64;

    using Statements = std::list<std::pair<std::string, Statement>>;
    Statements latestFirst_;
    std::unordered_map<std::string_view, typename Statements::iterator> places_;
};

}  // namespace kxjob
