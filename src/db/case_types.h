// The kinds of link records.
#pragma once

#include <cstdint>
#include <optional>

namespace db {

// By their numbers in the database.
enum class CaseType : std::int32_t { PriorApproval = 1, OrdinaryCase = 9 };

constexpr std::int32_t Number(CaseType type) {
  return static_cast<std::int32_t>(type);
}

// nullopt for any other number.
constexpr std::optional<CaseType> CaseTypeOf(std::int32_t number) {
  const auto type = static_cast<CaseType>(number);
  switch (type) {
    case CaseType::PriorApproval:
    case CaseType::OrdinaryCase:
      return type;
  }
  return std::nullopt;
}

}  // namespace db
