#include "exchange/request_kinds.h"

#include <gtest/gtest.h>

namespace exchange {
namespace {

struct Kind {
  std::int32_t message;
  RequestKind kind;
  std::u16string_view requestWord;
  std::u16string_view resultWord;
  std::optional<db::CaseType> caseType;
};

TEST(RequestKinds, EachMessageGivesItsKindsFileWordsAndCaseType) {
  for (const Kind& each :
       {Kind{10001, RequestKind::NewFHP, u"\\InNewFHP", u"\\OutNewFHP",
             db::CaseType::PriorApproval},
        Kind{10002, RequestKind::NewCase, u"\\InNewCase", u"\\OutNewCase",
             db::CaseType::OrdinaryCase},
        Kind{10009, RequestKind::ExistCase, u"\\InExistCase", u"\\OutExistCase", std::nullopt}}) {
    SCOPED_TRACE(each.message);
    EXPECT_EQ(KindOf(each.message), each.kind);
    const RequestKindRow row = RowOf(each.kind);
    EXPECT_EQ(row.requestWord, each.requestWord);
    EXPECT_EQ(row.resultWord, each.resultWord);
    EXPECT_EQ(row.caseType, each.caseType);
  }
}

TEST(RequestKinds, OtherMessagesHaveNoKind) {
  for (const std::int32_t message : {0, 1, 10000, 10003, 10008, 10010, -10001}) {
    EXPECT_EQ(KindOf(message), std::nullopt) << message;
  }
}

}  // namespace
}  // namespace exchange
