#include "fhp/tooth_scanner.h"

#include <algorithm>

#include "automation/automation_error.h"

namespace fhp {
namespace {

constexpr std::u16string_view kClosingTag = u"</";
// "<" and ">" around the tooth.
constexpr std::size_t kTagMarks = 2;

}  // namespace

ToothScanner::ToothScanner(std::u16string_view column, ScanRules rules)
    : column_(column),
      rules_(rules),
      lastTagEnd_(column.rfind(u'>')),
      lastScanned_(column.empty() || rules.scansLastPosition ? column.size() : column.size() - 1) {}

std::optional<ToothText> ToothScanner::Next() {
  while (!ended_) {
    // On to the next "<", or past the end.
    MoveBy(std::min(column_.find(u'<', position_), lastScanned_) + 1 - position_);
    if (position_ > lastScanned_) {
      ended_ = true;
    } else if (AtTag()) {
      return TakeRun();
    }
  }
  return std::nullopt;
}

bool ToothScanner::AtTag() const {
  const std::u16string_view rest = column_.substr(position_ - 1);
  return rest.front() == u'<' && !rest.starts_with(kClosingTag) &&
         IsClosed(lastTagEnd_ != std::u16string_view::npos && lastTagEnd_ >= position_);
}

bool ToothScanner::IsClosed(bool closed) const {
  if (!closed && rules_.refusesOpenRuns) {
    throw automation::AutomationError(automation::RuntimeError::InvalidProcedureCall);
  }
  return closed;
}

ToothText ToothScanner::TakeRun() {
  const std::u16string_view rest = column_.substr(position_);
  const std::u16string_view tooth = rest.substr(0, rest.find(u'>'));
  MoveBy(tooth.size() + kTagMarks);
  const std::u16string_view text = column_.substr(position_ - 1);
  const std::size_t end = text.find(kClosingTag);
  ended_ = !IsClosed(end != std::u16string_view::npos);
  return {tooth, text.substr(0, end)};
}

void ToothScanner::MoveBy(std::size_t units) {
  position_ += units;
  if (position_ > static_cast<std::size_t>(rules_.largestPosition)) {
    throw automation::AutomationError(automation::RuntimeError::Overflow);
  }
}

}  // namespace fhp
