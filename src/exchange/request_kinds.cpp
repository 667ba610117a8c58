#include "exchange/request_kinds.h"

#include "exchange/result_readers.h"

namespace exchange {
namespace {

using db::CaseType;
using enum RequestKind;

// One row per kind.
std::optional<RequestKindRow> Find(RequestKind kind) {
  switch (kind) {
    case NewFHP:
      return {{.requestWord = u"\\InNewFHP",
               .resultWord = u"\\OutNewFHP",
               .caseType = CaseType::PriorApproval,
               .read = ReadNewResult,
               .xmlProcedure = u" in XMLReadNewFHP",
               .procedure = u" in ReadNewFHP",
               .traced = platform::TracedFile::NewFHP}};
    case NewCase:
      return {{.requestWord = u"\\InNewCase",
               .resultWord = u"\\OutNewCase",
               .caseType = CaseType::OrdinaryCase,
               .read = ReadNewResult,
               .xmlProcedure = u" in XMLReadNewCase",
               .procedure = u" in ReadNewCase",
               .traced = platform::TracedFile::NewCase}};
    case ExistCase:
      return {{.requestWord = u"\\InExistCase",
               .resultWord = u"\\OutExistCase",
               .caseType = std::nullopt,
               .read = ReadExistResult,
               .xmlProcedure = u" in XMLReadExistCase",
               .procedure = u" in ReadExistCase",
               .traced = platform::TracedFile::ExistCase}};
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
