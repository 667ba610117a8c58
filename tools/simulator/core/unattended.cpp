#include "simulator/core/unattended.h"

#include <optional>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "simulator/core/problem.h"

namespace simulator {
namespace {

// The name after the last backslash, without its extension.
std::u16string Stem(const std::u16string& path) {
  const auto name = path.substr(path.rfind(u'\\') + 1);
  return name.substr(0, name.rfind(u'.'));
}

std::u16string Name(const std::u16string& path) {
  return path.substr(path.rfind(u'\\') + 1);
}

std::u16string OnOneLine(std::u16string text) {
  text = automation::ReplaceNoCase(text, u"\r\n\r\n", u" ");
  return automation::ReplaceNoCase(text, u"\r\n", u" ");
}

void LogAll(Surroundings& surroundings, const std::vector<std::u16string>& lines) {
  for (const auto& line : lines) {
    surroundings.Log(line);
  }
}

}  // namespace

ExitCode Unattended::Run(const CommandLine& commandLine, const std::u16string& commandLineText,
                         const Plan& plan) {
  try {
    if (!plan.keepFolder.empty() && !files.FolderExists(plan.keepFolder)) {
      files.CreateFolder(plan.keepFolder);
    }
    surroundings.Log(u"Kommandorad: " + commandLineText);
    if (!commandLine.problems.empty() || !plan.problems.empty()) {
      LogAll(surroundings, commandLine.problems);
      LogAll(surroundings, plan.problems);
      return ExitCode::BadCall;
    }
    return Serve(commandLine, commandLineText, plan);
  } catch (const Problem& problem) {
    surroundings.Log(OnOneLine(problem.text()));
  } catch (const automation::AutomationError& error) {
    surroundings.Log(u"Kopiorna i " + plan.keepFolder + u" kan inte skrivas: " +
                     error.description());
  }
  return ExitCode::FileFailure;
}

ExitCode Unattended::Serve(const CommandLine& commandLine, const std::u16string& commandLineText,
                           const Plan& plan) {
  Keep(commandLine, commandLineText, plan);
  if (commandLine.requestPath.empty()) {
    surroundings.Log(u"Startad utan begäran.");
    return ExitCode::Done;
  }
  std::optional<Request> request;
  try {
    request = ReadRequest(files, documents, commandLine.requestPath);
  } catch (const Problem& problem) {
    surroundings.Log(OnOneLine(problem.text()));
    return ExitCode::UnreadableRequest;
  }
  surroundings.Log(u"Begäran: " + KindText(request->kind));
  return Deliver(commandLine, *request, plan);
}

ExitCode Unattended::Deliver(const CommandLine& commandLine, const Request& request,
                             const Plan& plan) {
  Answer answer = AnswerByPlan(plan, request, now);
  if (!request.ExpectsAnswer()) {
    answer.outcome = Outcome::None;
  }
  if (!IsPossible(answer.outcome, request.kind)) {
    surroundings.Log(u"Planens utfall passar inte begäran.");
    return ExitCode::BadCall;
  }
  Delivery delivery(commandLine, request, files, surroundings);
  delivery.Write(answer);
  if (answer.outcome != Outcome::None) {
    surroundings.Log(u"Resultatfil: " + request.resultPath);
    if (!plan.keepFolder.empty()) {
      files.ReplaceContents(plan.keepFolder + u"\\" + Name(request.resultPath),
                            ResultFileBytes(request, answer));
    }
  }
  const bool removed = RemoveRequest(delivery);
  if (!NotifyWithin(plan.wait, delivery)) {
    surroundings.Log(OnOneLine(delivery.NobodyThereText()));
    return ExitCode::NoHost;
  }
  if (answer.outcome != Outcome::None) {
    surroundings.Log(u"Meddelande " + automation::Decimal10(request.notification.message) +
                     u" med nyckel " + automation::Decimal10(request.notification.wParam) +
                     u" skickat till " + request.notification.className + u".");
  }
  return removed ? ExitCode::Done : ExitCode::FileFailure;
}

bool Unattended::RemoveRequest(Delivery& delivery) {
  try {
    delivery.RemoveRequest();
    return true;
  } catch (const Problem& problem) {
    surroundings.Log(OnOneLine(problem.text()));
    return false;
  }
}

void Unattended::Keep(const CommandLine& commandLine, const std::u16string& commandLineText,
                      const Plan& plan) {
  if (plan.keepFolder.empty()) {
    return;
  }
  const bool request = !commandLine.requestPath.empty();
  const auto start =
      plan.keepFolder + u"\\" + (request ? Stem(commandLine.requestPath) + u"." : u"");
  files.ReplaceContents(start + u"commandline.txt", automation::ToUtf8(commandLineText + u"\r\n"));
  if (!request) {
    return;
  }
  try {
    surroundings.Copy(commandLine.requestPath,
                      plan.keepFolder + u"\\" + Name(commandLine.requestPath));
  } catch (const automation::AutomationError& error) {
    // A missing request is reported by the code that reads it.
    surroundings.Log(u"Begäran kopieras inte: " + error.description());
  }
}

bool Unattended::NotifyWithin(std::chrono::milliseconds bound, Delivery& delivery) {
  constexpr std::chrono::milliseconds step(50);
  for (auto left = bound; !delivery.Notify(); left -= step) {
    if (left <= std::chrono::milliseconds::zero()) {
      return false;
    }
    surroundings.Pause(step);
  }
  return true;
}

}  // namespace simulator
