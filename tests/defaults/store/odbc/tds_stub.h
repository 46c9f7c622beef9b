#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace kxjob::testing_support {

/// Stands in for a SQL Server at the other end of a driver: takes one login after the other, keeps what it is
/// asked, and gives the answers it was told. It knows the protocol (TDS 7.4) and no SQL at all.
class TdsStub {
public:
    TdsStub();
    TdsStub(const TdsStub&) = delete;
    TdsStub& operator=(const TdsStub&) = delete;
    ~TdsStub();

    std::string ConnectionString() const;

    /// Whatever holds `part` gets `tokens` as its answer; all else is simply done.
    void Answer(const std::string& part, const std::string& tokens);
    /// Whatever holds `part` is the last thing that a connection hears.
    void HangUpOn(const std::string& part);

    /// What came in, in order: the text of a batch; "begin", "commit" and "rollback"; of a call with
    /// parameters its bytes.
    std::vector<std::string> Requests() const;

    // Answers.
    static std::string Done();
    static std::string Error(std::int32_t number, const std::string& message);
    /// One row with a whole number and a text of any length.
    static std::string Row(std::int32_t number, std::u16string_view text);

private:
    struct Rule {
        std::string part;
        std::string tokens;
        bool hangUp;
    };

    void Serve();
    void ServeConnection(int socket);
    /// False when the connection is to be closed.
    bool Take(int socket, unsigned char type, const std::string& payload);
    const Rule* RuleFor(const std::string& request) const;

    int listener_ = -1;
    int port_ = 0;
    mutable std::mutex mutex_;  // of the three below
    std::vector<Rule> rules_;
    std::vector<std::string> requests_;
    int connection_ = -1;
    std::thread server_;
};

}  // namespace kxjob::testing_support
