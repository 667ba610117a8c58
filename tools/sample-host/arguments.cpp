#include "arguments.h"

#include "com/bstr.h"

namespace sample_host {

Arguments::Arguments(Arguments&& other) noexcept : arguments_(std::move(other.arguments_)) {
  other.arguments_.clear();
}

Arguments::~Arguments() {
  for (const auto& argument : arguments_) {
    SysFreeString(argument.text);
  }
}

void Arguments::AddNumber(long number) {
  arguments_.push_back({number, nullptr});
}

void Arguments::AddText(std::u16string_view text) {
  arguments_.push_back({0, com::Bstr(text).Detach()});
}

}  // namespace sample_host
