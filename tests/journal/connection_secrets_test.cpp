#include "journal/connection_secrets.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace kxjob {
namespace {

struct Case {
    const char* meaning;
    const char* text;
    const char* shown;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.meaning;
}

class Secrets : public testing::TestWithParam<Case> {};

TEST_P(Secrets, AreReplaced) {
    EXPECT_EQ(WithoutSecrets(GetParam().text), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    ConnectionStrings, Secrets,
    testing::Values(
        Case{"empty text", "", ""},
        Case{"no password", "Driver=SQLite;Database=/data/jobs.db", "Driver=SQLite;Database=/data/jobs.db"},
        Case{"plain in the middle", "Driver=x;UID=me;PWD=tiger;Port=1", "Driver=x;UID=me;PWD=***;Port=1"},
        Case{"plain at the end", "DSN=x;Password=tiger", "DSN=x;Password=***"},
        Case{"at the start", "PWD=tiger;DSN=x", "PWD=***;DSN=x"},
        Case{"lower case", "dsn=x;pwd=tiger;", "dsn=x;pwd=***;"},
        Case{"mixed case", "DSN=x;pAsSwOrD=tiger;", "DSN=x;pAsSwOrD=***;"},
        Case{"blanks around the sign", "DSN=x; Pwd = tiger ;Port=1", "DSN=x; Pwd = ***;Port=1"},
        Case{"braced, with what would end a plain one", "PWD={a;b=c\nd};DSN=x", "PWD=***;DSN=x"},
        Case{"braced, with a brace of its own", "PWD={a}};b};DSN=x", "PWD=***;DSN=x"},
        Case{"braced, with more behind it", "PWD={a}b;DSN=x", "PWD=***;DSN=x"},
        Case{"double quotes", "Password=\"a;\"\"b\";Data Source=x", "Password=***;Data Source=x"},
        Case{"single quotes", "Password='a;''b';Data Source=x", "Password=***;Data Source=x"},
        Case{"never closed brace", "PWD={a;DSN=x", "PWD=***"},
        Case{"never closed quote", "PWD=\"a;DSN=x", "PWD=***"},
        Case{"brace inside a plain one", "PWD=a{b;DSN=x}", "PWD=***;DSN=x}"},
        Case{"equals signs inside a plain one", "PWD=a=b=PWD=c;DSN=x", "PWD=***;DSN=x"},
        Case{"beginning with an equals sign", "PWD==a;DSN=x", "PWD=***;DSN=x"},
        Case{"empty", "PWD=;DSN=x", "PWD=***;DSN=x"}, Case{"empty at the end", "DSN=x;PWD=", "DSN=x;PWD=***"},
        Case{"twice", "PWD=a;Password=b", "PWD=***;Password=***"},
        Case{"a keyword that ends so", "DSN=x;SSLPassword=a;ProxyPwd=b",
             "DSN=x;SSLPassword=***;ProxyPwd=***"},
        Case{"a keyword that only begins so", "PasswordFile=/etc/pw;DSN=x", "PasswordFile=/etc/pw;DSN=x"},
        Case{"the word as a value", "UID=pwd;Database=password", "UID=pwd;Database=password"},
        Case{"only an equals sign", "=", "="},
        Case{"text that is not ASCII", "UID=m\xC3\xBCller;PWD=gr\xC3\xBC\xC3\x9F;DSN=\xF0\x9F\x94\x91",
             "UID=m\xC3\xBCller;PWD=***;DSN=\xF0\x9F\x94\x91"},
        Case{"a line break behind the keyword", "DSN=x;PWD\n=tiger", "DSN=x;PWD\n=***"},
        Case{"a line break before the value", "PWD=\r\n tiger;DSN=x", "PWD=\r\n ***;DSN=x"},
        Case{"a line break in the value", "PWD=ti\nger;DSN=x", "PWD=***;DSN=x"},
        Case{"shown before", "PWD=***;DSN=x", "PWD=***;DSN=x"}));

class DocumentSecrets : public testing::TestWithParam<Case> {};

TEST_P(DocumentSecrets, AreReplaced) {
    EXPECT_EQ(DocumentWithoutSecrets(GetParam().text), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, DocumentSecrets,
    testing::Values(Case{"the connection string is the last item of its line",
                         "ADOConnectionString = DSN=x;PWD=tiger\nProvider = 5\n",
                         "ADOConnectionString = DSN=x;PWD=***\nProvider = 5\n"},
                    Case{"the password comes first", "ADOConnectionString=PWD=tiger;DSN=x\r\nProvider=5",
                         "ADOConnectionString=PWD=***;DSN=x\r\nProvider=5"},
                    Case{"the document's lines end with CR LF",
                         "ADOConnectionString = DSN=x;PWD=tiger\r\nProvider = 5\r\n",
                         "ADOConnectionString = DSN=x;PWD=***\r\nProvider = 5\r\n"},
                    Case{"a commented line", "# ADOConnectionString = PWD=old\nProvider = 5\n",
                         "# ADOConnectionString = PWD=***\nProvider = 5\n"}));

TEST(SecretsOfAValue, AreReplacedInAText) {
    EXPECT_EQ(ValueWithoutSecrets("PWD=a\nb"), Value("PWD=***"));
    EXPECT_EQ(DocumentValueWithoutSecrets("PWD=a\nb"), Value("PWD=***\nb"));
}

TEST(SecretsOfAValue, LeaveAnyOtherValueAsItIs) {
    EXPECT_EQ(ValueWithoutSecrets(5), Value(5));
    EXPECT_EQ(DocumentValueWithoutSecrets(5), Value(5));
    EXPECT_EQ(ValueWithoutSecrets(Value()), Value());
    EXPECT_EQ(ValueWithoutSecrets(Null()), Value(Null()));
}

}  // namespace
}  // namespace kxjob
