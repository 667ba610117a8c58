#include "exchange/request_kinds.h"

#include "exchange/result_readers.h"

namespace exchange {
namespace {

using db::CaseType;
using enum RequestKind;

// One row a kind.
std::optional<RequestKindRow> Find(RequestKind kind) {
  switch (kind) {
    case NewFHP:
      return RequestKindRow{u"\\InNewFHP", u"\\OutNewFHP",       CaseType::PriorApproval,
                            ReadNewResult, u" in XMLReadNewFHP", u" in ReadNewFHP"};
    case NewCase:
      return RequestKindRow{u"\\InNewCase", u"\\OutNewCase",       CaseType::OrdinaryCase,
                            ReadNewResult,  u" in XMLReadNewCase", u" in ReadNewCase"};
    case ExistCase:
      return RequestKindRow{u"\\InExistCase", u"\\OutExistCase",       std::nullopt,
                            ReadExistResult,  u" in XMLReadExistCase", u" in ReadExistCase"};
  }
  return std::nullopt;
}

}  // namespace

RequestKindRow RowOf(RequestKind kind) {
  return Find(kind).value();
}

std::optional<RequestKind> KindOf(std::int32_t message) {
  const auto kind = static_cast<RequestKind>(message);
  return Find(kind) ? std::optional(kind) : std::nullopt;
}

}  // namespace exchange
