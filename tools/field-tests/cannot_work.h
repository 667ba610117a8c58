// Why the field tests stop before they change anything, for the person.
#pragma once

#include <stdexcept>

namespace field_tests {

class CannotWork : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace field_tests
