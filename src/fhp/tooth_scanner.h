// Reads the host's per-tooth columns: runs of a tag (the tooth), a text, and a closing tag, as in
// "<11>Krona</11><12>Extr</12>". What stands between the runs is passed over.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace fhp {

// One run. Both are parts of the column's text.
struct ToothText {
  std::u16string_view tooth;
  std::u16string_view text;
};

// How far a scan goes. Positions are counted from 1, in UTF-16 units.
struct ScanRules {
  // Whether the text's last position is scanned, too.
  bool scansLastPosition;
  // A move beyond it raises error 6.
  std::int32_t largestPosition;
  // Whether a tag without ">", or a text without a closing tag, raises error 5. Otherwise such a
  // "<" is no tag, and such a text reaches to the end of the column and ends the scan.
  bool refusesOpenRuns;
};

// Nothing of a plan is lost, even of one cut off by the database.
inline constexpr ScanRules kDocumentScan = {true, std::numeric_limits<std::int32_t>::max(), false};
// Kept: positions of the send check have 16 bits, and the classic runtime refuses a text of
// negative length. So it lets no plan through that it cannot judge: a very long one, or a run
// without its end.
inline constexpr ScanRules kSendCheckScan = {false, std::numeric_limits<std::int16_t>::max(), true};

// Goes from run to run. The scan goes on inside a run, from the second unit of its text on, so that
// a run that stands in another one's text is found, too.
class ToothScanner {
 public:
  // `column` must outlive the scanner and what it gives out.
  ToothScanner(std::u16string_view column, ScanRules rules);

  // The next run, or nothing behind the last one. Error 6 when the scan leaves the rules'
  // positions, 5 for an open run that they refuse.
  std::optional<ToothText> Next();

 private:
  bool AtTag() const;
  bool IsClosed(bool closed) const;
  ToothText TakeRun();
  void MoveBy(std::size_t units);

  std::u16string_view column_;
  ScanRules rules_;
  // Behind it no tag can be closed by ">".
  std::size_t lastTagEnd_;
  std::size_t lastScanned_;
  std::size_t position_ = 0;
  bool ended_ = false;
};

}  // namespace fhp
