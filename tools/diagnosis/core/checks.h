// Every line that a report can have, in the order in which they are checked.
#pragma once

#include <array>

#include "diagnosis/core/finding.h"

namespace diagnosis::checks {

inline constexpr Check kWindows{u"windows", u"Windows"};
inline constexpr Check kComponent{u"component", u"Vilnor.dll"};
inline constexpr Check kComponentVersion{u"component-version", u"Vilnor.dll, version"};
inline constexpr Check kComponentSignature{u"component-signature", u"Vilnor.dll, signatur"};
inline constexpr Check kAdo{u"ado", u"ADO"};
inline constexpr Check kMsxml{u"msxml", u"MSXML"};
// In the order of host::kHostRegistrations.
inline constexpr std::array kHostKeys = {Check{u"host-key-1", u"Kestra Dental, nyckel 1"},
                                         Check{u"host-key-2", u"Kestra Dental, nyckel 2"},
                                         Check{u"host-key-3", u"Kestra Dental, nyckel 3"}};
inline constexpr Check kHostRegistration{u"host-registration", u"Kestra Dental"};
inline constexpr Check kHostProgram{u"host-program", u"Kestra Dental, program"};
inline constexpr Check kLinkProgram{u"link-program", u"Vilnor Link"};
inline constexpr Check kExchangeFolder{u"exchange-folder", u"Utbytesmapp"};
inline constexpr Check kExchangeRights{u"exchange-rights", u"Utbytesmapp, rättigheter"};
inline constexpr Check kExchangeBlanks{u"exchange-blanks", u"Utbytesmapp, sökväg"};
inline constexpr Check kExchangeDrive{u"exchange-drive", u"Utbytesmapp, enhet"};
inline constexpr Check kExchangeTwin{u"exchange-twin", u"Utbytesmapp, dubblett"};
inline constexpr Check kUnreadResults{u"unread-results", u"Resultat"};
inline constexpr Check kLeftRequests{u"left-requests", u"Begäranden"};
inline constexpr Check kNotificationWindows{u"notification-windows", u"Mottagare av svar"};
inline constexpr Check kDateFormat{u"date-format", u"Datumformat"};
inline constexpr Check kDecimalSign{u"decimal-sign", u"Decimaltecken"};
// Only when asked for.
inline constexpr Check kDatabase{u"database", u"Databas"};
inline constexpr Check kDatabaseTables{u"database-tables", u"Databas, tabeller"};

inline constexpr std::array kAll = {
    kWindows,       kComponent,    kComponentVersion, kComponentSignature, kAdo,
    kMsxml,         kHostKeys[0],  kHostKeys[1],      kHostKeys[2],        kHostRegistration,
    kHostProgram,   kLinkProgram,  kExchangeFolder,   kExchangeRights,     kExchangeBlanks,
    kExchangeDrive, kExchangeTwin, kUnreadResults,    kLeftRequests,       kNotificationWindows,
    kDateFormat,    kDecimalSign,  kDatabase,         kDatabaseTables};

}  // namespace diagnosis::checks
