// Reads the host's per-tooth columns: runs of a tag (the tooth), a text, and a closing tag, as in
// "<11>Krona</11><12>Extr</12>". Text between the runs is skipped.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace fhp {

// One run. Both are views of the column's text.
struct ToothText {
  std::u16string_view tooth;
  std::u16string_view text;
};

// How far a scan goes. Positions are counted from 1, in UTF-16 units.
struct ScanRules {
  // Whether the text's last position is scanned too.
  bool scansLastPosition;
  // A move beyond it raises error 6.
  std::int32_t largestPosition;
  // Whether a tag without ">", or a text without a closing tag, raises error 5. Otherwise such a
  // "<" is not a tag, and such a text extends to the end of the column and ends the scan.
  bool refusesOpenRuns;
};

// No part of a plan is lost, even if the database truncated it.
inline constexpr ScanRules kDocumentScan = {true, std::numeric_limits<std::int32_t>::max(), false};
// Kept: positions of the send check have 16 bits, and the classic runtime refuses a text of
// negative length. So it passes no plan that it cannot judge: a very long one, or one with an
// unclosed run.
inline constexpr ScanRules kSendCheckScan = {false, std::numeric_limits<std::int16_t>::max(), true};

// Iterates over the runs. After a run the scan continues at the second unit of that run's text, so
// that it also finds a run inside another one's text.
class ToothScanner {
 public:
  // `column` must outlive the scanner and its runs.
  ToothScanner(std::u16string_view column, ScanRules rules);

  // The next run, or nothing after the last. Error 6 if the scan passes the last position that the
  // rules allow, 5 for an unclosed run that they refuse.
  std::optional<ToothText> Next();

 private:
  // Whether the "<" at an index begins a closing tag.
  bool IsClosing(std::size_t mark) const;
  bool AtTag() const;
  bool IsClosed(bool closed) const;
  ToothText TakeRun();
  void MoveBy(std::size_t units);

  std::u16string_view column_;
  ScanRules rules_;
  // Beyond it no tag can be closed by ">".
  std::size_t lastTagEnd_;
  std::size_t lastScanned_;
  std::size_t position_ = 0;
  // The next "<" from the position on, unless the scan has passed it.
  std::size_t mark_;
  bool ended_ = false;
};

}  // namespace fhp
