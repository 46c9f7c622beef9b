#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "contract/data_access_contract.h"
#include "kxjob/array.h"
#include "support/raised_error.h"

// Sessions take statements apart that they understand: they keep them prepared, or join them. With a
// comment nothing is understood, and a statement runs as it stands; the effect must be the same.
namespace kxjob::testing_support {
namespace {

/// Makes random statements on tables like t.
class RandomStatements {
public:
    explicit RandomStatements(unsigned seed) : random_(seed) {}

    std::vector<std::string> Make(const std::string& table, int count) {
        std::vector<std::string> statements;
        for (int i = 0; i < count; ++i) statements.push_back(One(table, i));
        return statements;
    }

private:
    template <std::size_t size>
    std::string OneOf(const std::array<const char*, size>& texts) {
        return texts.at(random_() % size);
    }
    std::string Key(int number) { return "'k" + std::to_string(number) + "'"; }
    std::string Whole() {
        return OneOf(
            std::array{"0", "1", "-1", "7", "2147483647", "-2147483648", "NULL", "null", "'12'", "'0'"});
    }
    std::string Text() {
        return OneOf(std::array{"''",      "'a'",      "'it''s'",      "''''",          "'--'",
                                "'/* */'", "'(1, 2)'", "');'",         "'?'",           "':p'",
                                "'\"'",    "'`'",      "'line\nend'",  "'back\\slash'", "'\u00E9\U0001F600'",
                                "NULL",    "'0'",      "'trailing  '", "'VALUES ('",    "17",
                                "-3"});
    }
    std::string Double() { return OneOf(std::array{"0", "0.5", "-1.25", "1e3", "2E-3", "NULL", "12345678"}); }
    std::string One(const std::string& table, int i) {
        switch (random_() % 12) {
            case 0:
                return "UPDATE " + table + " SET n = " + Whole() + ", v = " + Text() +
                       " WHERE k = " + Key(i / 2);
            case 1: return "DELETE FROM " + table + " WHERE k = " + Key(i / 3);
            case 2: return "INSERT INTO " + table + " (k, v) VALUES (" + Key(i) + ", " + Text() + ")";
            case 3: return "insert into " + table + " (k,n)\n values( " + Key(i) + " ," + Whole() + " ) ";
            case 4:
                return "INSERT INTO " + table + " (k, n) SELECT " + Key(i) + ", COUNT(*) FROM " + table +
                       " WHERE v = " + Key(i);
            default: break;
        }
        return "INSERT INTO " + table + " (k, n, big, d, v) VALUES (" + Key(i) + ", " + Whole() + ", " +
               Whole() + ", " + Double() + ", " + Text() + ")";
    }

    std::mt19937 random_;
};

std::vector<std::string> AsTheyStand(std::vector<std::string> statements) {
    for (std::string& statement : statements) statement += " /* as it stands */";
    return statements;
}

std::vector<std::string> TriggerThatNotes(const std::string& engine, const std::string& table) {
    const std::string note = "INSERT INTO noted (source, k, n) VALUES ('" + table + "', NEW.k, NEW.n);";
    const std::string begin = "CREATE TRIGGER note_" + table + " AFTER INSERT ON " + table + " FOR EACH ROW ";
    if (engine != "PostgreSQL") return {begin + "BEGIN " + note + " END"};
    return {"CREATE FUNCTION note_" + table + "() RETURNS trigger LANGUAGE plpgsql AS $$BEGIN " + note +
                " RETURN NULL; END$$",
            begin + "EXECUTE FUNCTION note_" + table + "()"};
}

}  // namespace

class RecognisedStatements : public DataAccessContract {
protected:
    void SetUp() override {
        DataAccessContract::SetUp();
        if (IsSkipped()) return;
        Execute(
            "CREATE TABLE u (k varchar(64) NOT NULL PRIMARY KEY, n integer, big bigint, d double precision, "
            "v " +
            GetParam().longText + ")");
        Execute("CREATE TABLE noted (source varchar(8), k varchar(64), n integer)");
        for (const char* table : {"t", "u"}) {
            for (const std::string& statement : TriggerThatNotes(GetParam().engineName, table))
                Execute(statement);
        }
    }
    void SendTogether(const std::vector<std::string>& statements) {
        batch_.Open(connectionString_, 2, static_cast<std::int32_t>(statements.size()));
        for (const std::string& statement : statements) batch_.Add(statement);
        batch_.Flush();
    }
    void ExpectTheSame() {
        const std::string columns = "SELECT k, n, big, d, v FROM ";
        EXPECT_EQ(Query(columns + "t ORDER BY k", true), Query(columns + "u ORDER BY k", true));
        const std::string notes = "SELECT k, n FROM noted WHERE source = ";
        EXPECT_EQ(Query(notes + "'t' ORDER BY k", true), Query(notes + "'u' ORDER BY k", true));
    }
};

INSTANTIATE_TEST_SUITE_P(Engines, RecognisedStatements, testing::ValuesIn(EveryEngine()), EngineName);

TEST_P(RecognisedStatements, DoInABatchWhatTheyDoAsTheyStand) {
    constexpr int kStatements = 40;
    for (unsigned seed = 0; seed < 25; ++seed) {
        for (const char* table : {"t", "u", "noted"}) Execute(std::string("DELETE FROM ") + table);

        SendTogether(RandomStatements(seed).Make("t", kStatements));
        for (const std::string& one : AsTheyStand(RandomStatements(seed).Make("u", kStatements)))
            Execute(one);

        ExpectTheSame();
        if (HasFailure()) FAIL() << "with seed " << seed;
    }
}

TEST_P(RecognisedStatements, DoOneByOneWhatTheyDoAsTheyStand) {
    constexpr int kStatements = 40;
    for (const std::string& one : RandomStatements(99).Make("t", kStatements)) Execute(one);
    for (const std::string& one : AsTheyStand(RandomStatements(99).Make("u", kStatements))) Execute(one);

    ExpectTheSame();
}

TEST_P(RecognisedStatements, ReadAgainAndAgainWhatTheyReadAsTheyStand) {
    constexpr int kStatements = 60;
    constexpr std::array kQueries = {"SELECT * FROM t WHERE k = ", "SELECT k, n, v, 'x' FROM t WHERE v = ",
                                     "SELECT COUNT(*), MAX(n) FROM t WHERE k <> 'k1' AND v < ",
                                     "SELECT n FROM t WHERE n IN (0, 1, 7) AND k > ",
                                     "SELECT CASE WHEN k < 'k3' THEN 'low' ELSE v END FROM t WHERE k < "};
    for (const std::string& one : RandomStatements(7).Make("t", kStatements)) Execute(one);

    for (const char* query : kQueries) {
        for (const char* text : {"'k5'", "'a'", "'it''s'", "''", "'k9'", "'\u00E9\U0001F600'", "'none'"}) {
            const std::string sql = std::string(query) + text + " ORDER BY 1";
            EXPECT_EQ(Query(sql, true), Query(sql + " /* as it stands */", true)) << sql;
        }
    }
}

TEST_P(RecognisedStatements, KeepTheirLiteralsAmongManyOthers) {
    constexpr int kShapes = 150;
    Execute("INSERT INTO t (k, n) VALUES ('a', 0)");
    for (const char* text : {"x", "y", "z"}) {
        for (int shape = 0; shape < kShapes; ++shape) {
            const std::string column = "c" + std::to_string(shape);
            const Value rows = Query("SELECT '" + column + text + "' AS " + column + " FROM t WHERE k = 'a'");
            EXPECT_EQ(rows.Rows().Cell(0, 0), Value(column + text));
        }
    }
}

TEST_P(RecognisedStatements, MeetTheTableAsItIsNow) {
    const auto putAndLook = [&](const std::string& key) {
        Execute("INSERT INTO later (k, v) VALUES ('" + key + "', 'x" + key + "')");
        return Query("SELECT * FROM later WHERE k = '" + key + "'");
    };
    Execute("CREATE TABLE later (k varchar(8), v varchar(8))");
    for (const char* key : {"1", "2", "3"})
        EXPECT_EQ(putAndLook(key).Rows().Cell(1, 0), Value(std::string("x") + key));

    Execute("ALTER TABLE later ADD COLUMN n integer DEFAULT 17");
    for (const char* key : {"4", "5", "6"}) EXPECT_EQ(putAndLook(key).Rows().Cell(2, 0), Value(17));
    Execute("DROP TABLE later");
    EXPECT_EQ(ErrorOf([&] { putAndLook("7"); }).Description().substr(0, 7), "[42S02]");
    Execute("CREATE TABLE later (v varchar(8), k integer)");

    for (const int key : {8, 9, 10}) {
        const Value rows = putAndLook(std::to_string(key));
        EXPECT_EQ(rows.Rows().Cell(0, 0), Value("x" + std::to_string(key)));
        EXPECT_EQ(rows.Rows().Cell(1, 0), Value(key));
    }
}

TEST_P(RecognisedStatements, FailAgainAndAgainAsTheyFailAsTheyStand) {
    constexpr std::array kFaults = {
        "INSERT INTO t (k, n) VALUES ('first', 1)",      "INSERT INTO t (k, v) VALUES (NULL, 'no key')",
        "INSERT INTO missing (k) VALUES ('a')",          "UPDATE t SET missing = 'a' WHERE k = 'first'",
        "SELECT 'a' FROM t WHERE k = 'b' WHERE k = 'c'", "SELECT 'a' FROM t WHERE missing(k, 'a') = 'b'"};
    Execute("INSERT INTO t (k) VALUES ('first')");
    for (const std::string fault : kFaults) {
        const AutomationError plain = ErrorOf([&] { Execute(fault + " /* as it stands */"); });
        for (int time = 0; time < 4; ++time) {
            const AutomationError error = ErrorOf([&] { Execute(fault); });

            EXPECT_EQ(error.Number(), plain.Number()) << fault;
            EXPECT_EQ(error.Description().substr(0, 7), plain.Description().substr(0, 7)) << fault;
        }
        Execute("UPDATE t SET n = 2 WHERE k = 'first'");
    }
    EXPECT_EQ(Query("SELECT n FROM t").Rows().Cell(0, 0), Value(2));
}

TEST_P(RecognisedStatements, FailAtThePlaceAtWhichTheyFailAsTheyStand) {
    constexpr int kStatements = 20;
    constexpr std::array kFaults = {"INSERT INTO t (k, n, big, d, v) VALUES ('first', 1, 1, 1, 'again')",
                                    "INSERT INTO t (k, v) VALUES (NULL, 'no key')",
                                    "INSERT INTO t (k, n) VALUES ('a', 1, 2)",
                                    "INSERT INTO missing (k) VALUES ('a')"};
    Execute("INSERT INTO t (k) VALUES ('first')");
    for (const char* fault : kFaults) {
        for (const std::size_t place : {0U, 7U, 19U}) {
            std::vector<std::string> statements = RandomStatements(5).Make("t", kStatements);
            statements[place] = fault;

            const AutomationError error = ErrorOf([&] { SendTogether(statements); });
            const AutomationError plain = ErrorOf([&] { SendTogether(AsTheyStand(statements)); });

            EXPECT_EQ(error.Number(), plain.Number()) << fault;
            const std::string which = "statement " + std::to_string(place + 1) + " of 20";
            EXPECT_THAT(error.Description(), testing::HasSubstr(which)) << fault;
            EXPECT_THAT(plain.Description(), testing::HasSubstr(which)) << fault;
            EXPECT_EQ(Query("SELECT COUNT(*) FROM t").Rows().Cell(0, 0), Value(1));
        }
    }
}

}  // namespace kxjob::testing_support
