// The rows of dialect.h, each in its own file.
#pragma once

#include "odbc/dialect.h"

namespace odbc {

extern const Dialect kSqlite;
extern const Dialect kPostgresql;
extern const Dialect kMariadb;

}  // namespace odbc
