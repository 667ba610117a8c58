#include "odbc/connection_text.h"

#include <gtest/gtest.h>
#include <string>

#include "automation/automation_error.h"
#include "fakes/printing.h"

namespace odbc {
namespace {

TEST(ConnectionText, KeysAreFoundIgnoringCase) {
  const ConnectionText text(u" Driver = {PostgreSQL Unicode} ;server=127.0.0.1;PWD={a;b}}c};;x");
  EXPECT_EQ(text.Find(u"DRIVER"), u"PostgreSQL Unicode");
  EXPECT_EQ(text.Find(u"Server"), u"127.0.0.1");
  EXPECT_EQ(text.Find(u"pwd"), u"a;b}c");
  EXPECT_EQ(text.Find(u"x"), std::nullopt);
  EXPECT_EQ(text.Find(u"Port"), std::nullopt);
}

TEST(ConnectionText, UnchangedPartsAreKept) {
  ConnectionText text(u"Driver={SQLite3};Database=/tmp/a b.db;PWD={a;b}}c};Trusted");
  text.Set(u"Timeout", u"5000");
  EXPECT_EQ(text.Text(),
            u"Driver={SQLite3};Database=/tmp/a b.db;PWD={a;b}}c};Trusted;Timeout=5000;");
}

TEST(ConnectionText, ValuesAreBracedWhenNeeded) {
  ConnectionText text(u"UID=x;");
  text.Set(u"uid", u"a;b}");
  text.Set(u"PWD", u" blank ");
  EXPECT_EQ(text.Text(), u"UID={a;b}}};PWD={ blank };");
}

TEST(ConnectionText, TruncatedOrEmptyStringIsRead) {
  for (const auto* text : {u"", u";", u"=", u"a=", u"=b", u"a={", u"a={b", u"a={}}", u" ; = ; "}) {
    EXPECT_NO_THROW(ConnectionText(text).Text());
  }
  EXPECT_EQ(ConnectionText(u"a={b").Find(u"a"), u"b");
}

TEST(ConnectRequest, SqliteWaitsFiveSecondsForALockUnlessTheStringSaysOtherwise) {
  EXPECT_EQ(RequestOf(u"Driver=SQLite3;Database=x", u"", u"").text,
            u"Driver=SQLite3;Database=x;Timeout=5000;");
  EXPECT_EQ(RequestOf(u"Driver=SQLite3;timeout=7;Database=x", u"", u"").text,
            u"Driver=SQLite3;timeout=7;Database=x;");
  EXPECT_EQ(RequestOf(u"Driver=PostgreSQL Unicode;Database=x", u"", u"").text,
            u"Driver=PostgreSQL Unicode;Database=x;");
}

TEST(ConnectRequest, SqliteIsConnectedInUtf8) {
  const auto callsOf = [](std::u16string_view text) {
    return RequestOf(text, u"", u"").dialect.textCalls;
  };
  EXPECT_EQ(callsOf(u"Driver=SQLite3"), TextCalls::Utf8);
  EXPECT_EQ(callsOf(u"Driver=PostgreSQL Unicode"), TextCalls::Wide);
  EXPECT_EQ(callsOf(u"Driver=MariaDB Unicode"), TextCalls::Wide);
  EXPECT_EQ(callsOf(u"DSN=clinic"), TextCalls::Wide);
}

TEST(ConnectRequest, MariadbIsConnectedInFullUnicodeUnlessTheStringSaysOtherwise) {
  EXPECT_EQ(RequestOf(u"Driver=MariaDB Unicode;Database=x", u"", u"").text,
            u"Driver=MariaDB Unicode;Database=x;CHARSET=utf8mb4;OPTION=2;");
  EXPECT_EQ(RequestOf(u"Driver=MariaDB Unicode;charset=latin1;Option=3", u"", u"").text,
            u"Driver=MariaDB Unicode;charset=latin1;Option=3;");
}

TEST(ConnectRequest, UserAndPasswordOverrideThoseInTheString) {
  EXPECT_EQ(RequestOf(u"DSN=d;UID=a;PWD=b", u"c", u"").text, u"DSN=d;UID=c;PWD=b;");
  EXPECT_EQ(RequestOf(u"DSN=d", u"c", u"e").text, u"DSN=d;UID=c;PWD=e;");
}

TEST(ConnectRequest, OnlyTheProviderForOdbcIsAccepted) {
  EXPECT_EQ(RequestOf(u"Provider=MSDASQL.1;DSN=d", u"", u"").text, u"DSN=d;");
  EXPECT_EQ(fakes::ErrorNumberOf([] { RequestOf(u"Provider=Other.Provider;DSN=d", u"", u""); }),
            3706);
}

}  // namespace
}  // namespace odbc
