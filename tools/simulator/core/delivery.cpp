#include "simulator/core/delivery.h"

#include "automation/automation_error.h"
#include "simulator/core/problem.h"

namespace simulator {

void Delivery::Write(const Answer& answer) {
  written_ = false;
  if (answer.outcome == Outcome::None) {
    return;
  }
  if (!IsPossible(answer.outcome, request_.kind)) {
    throw Problem(u"Utfallet passar inte begäran (" + KindText(request_.kind) + u").");
  }
  try {
    files_.ReplaceContents(request_.resultPath, ResultFileBytes(request_, answer));
  } catch (const automation::AutomationError& error) {
    throw Problem(u"Resultatfilen kan inte skrivas.\r\n" + request_.resultPath + u"\r\n\r\n" +
                  error.description());
  }
  written_ = true;
}

void Delivery::RemoveRequest() {
  if (!commandLine_.removeFiles) {
    return;
  }
  try {
    files_.DeleteFile(commandLine_.requestPath);
  } catch (const automation::AutomationError& error) {
    // Already removed: by an earlier try, or by another simulator on the same request.
    if (!error.Is(automation::RuntimeError::FileNotFound)) {
      throw Problem(u"Begäransfilen kan inte tas bort.\r\n" + commandLine_.requestPath +
                    u"\r\n\r\n" + error.description());
    }
  }
}

bool Delivery::Notify() {
  return !written_ || hosts_.Post(request_.notification);
}

std::u16string Delivery::NobodyThereText() const {
  return u"Värdprogrammet kan inte meddelas: inget fönster av klassen \u201D" +
         request_.notification.className +
         u"\u201D finns. Är värdprogrammet igång?\r\n\r\nResultatfilen ligger kvar.\r\n" +
         request_.resultPath;
}

}  // namespace simulator
