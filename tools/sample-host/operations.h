// Every operation of the component under the word that the command line calls it by.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "arguments.h"
#include "typelib/Vilnor.h"

namespace sample_host {

// The message to the component's hidden window by which Vilnor Link answers a request.
struct AwaitedAnswer {
  UINT message = 0;
  // The message's first parameter; nothing when only the component knows it.
  std::optional<WPARAM> key;
};

// An operation of BVilnor or of DBVilnor. The call prints its result and raises an AutomationError
// when it fails.
template <class Interface>
struct Operation {
  const char* word = "";
  // Names of the arguments; a text's name ends in "$", all others are whole numbers.
  const char* arguments = "";
  void (*call)(Interface& object, Arguments& arguments) = nullptr;
  // The answer's message and which argument is its key; 0 when no answer comes, -1 when no argument
  // is the key.
  UINT answerMessage = 0;
  int answerKey = -1;
};

// The words are this host's own for BVilnor, "DBVilnor." and the operation's name for DBVilnor.
std::span<const Operation<_BVilnor>> SessionOperations();
std::span<const Operation<_DBVilnor>> DatabaseOperations();

}  // namespace sample_host
