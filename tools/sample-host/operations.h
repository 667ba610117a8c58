// All operations of the component, by their command-line words.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "arguments.h"
#include "typelib/Vilnor.h"

namespace sample_host {

// The message that Vilnor Link posts to the component's hidden window to answer a request.
struct AwaitedAnswer {
  UINT message = 0;
  // The message's first parameter; nothing if only the component knows it.
  std::optional<WPARAM> key;
};

// An operation of BVilnor or of DBVilnor. The call prints its result and raises an AutomationError
// on failure.
template <class Interface>
struct Operation {
  const char* word = "";
  // Names of the arguments; a text's name ends in "$", all others are whole numbers.
  const char* arguments = "";
  void (*call)(Interface& object, Arguments& arguments) = nullptr;
  // The answer's message (0 if no answer comes), and the index of the argument that is its key (-1
  // if none is).
  UINT answerMessage = 0;
  int answerKey = -1;
};

// The words: this host's own for BVilnor; "DBVilnor." and the operation's name for DBVilnor.
std::span<const Operation<_BVilnor>> SessionOperations();
std::span<const Operation<_DBVilnor>> DatabaseOperations();

}  // namespace sample_host
