#include "diagnosis/core/options.h"

#include "automation/text.h"

namespace diagnosis {

const char16_t* const kHelp =
    u"VilnorCheck.exe undersöker om Vilnor kan fungera på den här datorn, för den användare som "
    u"kör "
    u"det. Det ändrar inget; med /databas kan drivrutinen skriva i databasens fil.\r\n\r\n"
    u"VilnorCheck            visar ett fönster\r\n"
    u"VilnorCheck /text      skriver rapporten som text\r\n"
    u"VilnorCheck /json      skriver rapporten som JSON\r\n"
    u"  /databas             frågar efter Kestra Dentals anslutningssträng och provar "
    u"databasen\r\n\r\n"
    u"Slutkod: 0 inget fel, 1 varningar, 2 fel, 3 fel kommandorad eller kunde inte köras.\r\n";

Options ReadOptions(const std::vector<std::u16string>& words) {
  Options options;
  for (const std::u16string& word : words) {
    const bool marked = word.starts_with(u'/') || word.starts_with(u'-');
    const std::u16string name = marked ? automation::UCase(word.substr(1)) : std::u16string();
    if (name == u"TEXT") {
      options.output = Options::Output::Text;
    } else if (name == u"JSON") {
      options.output = Options::Output::Json;
    } else if (name == u"?" || name == u"HELP" || name == u"HJÄLP") {
      options.output = Options::Output::Help;
    } else if (name == u"DATABAS") {
      options.database = true;
    } else {
      options.wrong = true;
      return options;
    }
  }
  if (options.database && options.output == Options::Output::Window) {
    options.output = Options::Output::Text;  // the window has a button for it
  }
  return options;
}

int ExitCodeOf(State worst) {
  return static_cast<int>(worst);
}

}  // namespace diagnosis
