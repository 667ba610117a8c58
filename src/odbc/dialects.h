// The rows, each in a file of its own.
#pragma once

#include "odbc/dialect.h"

namespace odbc {

extern const Dialect kSqlite;
extern const Dialect kPostgresql;
extern const Dialect kMariadb;

}  // namespace odbc
