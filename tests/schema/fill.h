// Makes and removes the host's tables on a connection.
#pragma once

#include <string>

#include "platform/database.h"

namespace schema {

// Replaces the tables by new ones with the sample data. `product` as in HostSchemas(), in any case.
void FillHostDatabase(platform::Connection& connection, const std::string& product);

}  // namespace schema
