// Programs that run beside the field tests.
#pragma once

namespace field_tests {

// Raises CannotWork if a practice program has the component's window open on this desktop. The
// tests post to a window of that class: a real practice program would enter their results into its
// own database.
void RequireNoPracticeProgram();

}  // namespace field_tests
