#include "fhp/tooth_scanner.h"

#include <algorithm>

#include "automation/automation_error.h"

namespace fhp {
namespace {

// "<" and ">" around the tooth.
constexpr std::size_t kTagMarks = 2;

}  // namespace

ToothScanner::ToothScanner(std::u16string_view column, ScanRules rules)
    : column_(column),
      rules_(rules),
      lastTagEnd_(column.rfind(u'>')),
      lastScanned_(column.empty() || rules.scansLastPosition ? column.size() : column.size() - 1),
      mark_(column.find(u'<')) {}

std::optional<ToothText> ToothScanner::Next() {
  while (!ended_) {
    if (mark_ < position_) {
      mark_ = column_.find(u'<', position_);
    }
    // Onto it, or past the end.
    MoveBy(std::min(mark_, lastScanned_) + 1 - position_);
    if (position_ > lastScanned_) {
      ended_ = true;
    } else if (AtTag()) {
      return TakeRun();
    }
  }
  return std::nullopt;
}

bool ToothScanner::IsClosing(std::size_t mark) const {
  return mark + 1 < column_.size() && column_[mark + 1] == u'/';
}

bool ToothScanner::AtTag() const {
  return !IsClosing(mark_) &&
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
  const std::size_t begin = position_ - 1;
  mark_ = column_.find(u'<', begin);
  std::size_t end = mark_;
  while (end != std::u16string_view::npos && !IsClosing(end)) {
    end = column_.find(u'<', end + 1);
  }
  ended_ = !IsClosed(end != std::u16string_view::npos);
  return {tooth, column_.substr(begin, end - begin)};
}

void ToothScanner::MoveBy(std::size_t units) {
  position_ += units;
  if (position_ > static_cast<std::size_t>(rules_.largestPosition)) {
    throw automation::AutomationError(automation::RuntimeError::Overflow);
  }
}

}  // namespace fhp
