#include "com/late_binding.h"

#include <deque>
#include <optional>
#include <vector>

#include "automation/value.h"
#include "com/com_error.h"
#include "com/converted_argument.h"
#include "com/variant.h"

namespace com {
namespace {

// One parameter of a member.
struct Parameter {
  // The type it refers to; nothing for a parameter by value.
  std::optional<VARTYPE> referenced;
  // Its default; nothing for a required parameter.
  std::optional<automation::Value> whenOmitted;
};

Parameter ParameterOf(const ELEMDESC& element) {
  Parameter parameter;
  if (element.tdesc.vt == VT_PTR) {
    parameter.referenced = element.tdesc.lptdesc->vt;
  }
  if ((element.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0) {
    parameter.whenOmitted = ToValue(element.paramdesc.pparamdescex->varDefaultValue);
  }
  return parameter;
}

// Nothing for an unknown member.
std::optional<std::vector<Parameter>> ParametersOf(ITypeInfo& typeInfo, DISPID member) {
  TYPEATTR* attributes = nullptr;
  Check(typeInfo.GetTypeAttr(&attributes));
  const UINT functions = attributes->cFuncs;
  typeInfo.ReleaseTypeAttr(attributes);
  for (UINT index = 0; index < functions; ++index) {
    FUNCDESC* function = nullptr;
    Check(typeInfo.GetFuncDesc(index, &function));
    const bool found = function->memid == member;
    std::vector<Parameter> parameters;
    for (SHORT i = 0; found && i < function->cParams; ++i) {
      parameters.push_back(ParameterOf(function->lprgelemdescParam[i]));
    }
    typeInfo.ReleaseFuncDesc(function);
    if (found) {
      return parameters;
    }
  }
  return std::nullopt;
}

bool IsOmitted(const VARIANT& argument) {
  return V_VT(&argument) == VT_ERROR && V_ERROR(&argument) == DISP_E_PARAMNOTFOUND;
}

// A call's arguments as they are passed on: those by reference have the member's own types.
class Arguments {
 public:
  Arguments(const DISPPARAMS& given, const std::vector<Parameter>& parameters)
      : parameters_(parameters),
        names_(given.rgdispidNamedArgs, given.rgdispidNamedArgs + given.cNamedArgs),
        passed_(given.rgvarg, given.rgvarg + given.cArgs),
        given_(parameters.size(), false) {}

  // Sets `wrong` to the index of an argument that cannot be converted.
  HRESULT Convert(UINT& wrong) {
    for (UINT i = 0; i < passed_.size(); ++i) {
      const std::size_t position = PositionOf(i);
      if (position >= parameters_.size()) {
        continue;
      }
      given_[position] = true;
      const HRESULT result = ConvertAt(i, parameters_[position]);
      if (FAILED(result)) {
        wrong = i;
        return result;
      }
    }
    return AddOmitted();
  }

  // Points into this object.
  DISPPARAMS Passed() {
    return {.rgvarg = passed_.data(),
            .rgdispidNamedArgs = names_.data(),
            .cArgs = static_cast<UINT>(passed_.size()),
            .cNamedArgs = static_cast<UINT>(names_.size())};
  }

  HRESULT StoreBack() const {
    for (const auto& argument : converted_) {
      const HRESULT result = argument.StoreBack();
      if (FAILED(result)) {
        return result;
      }
    }
    return S_OK;
  }

 private:
  // Named arguments come first, then the others in reverse order.
  std::size_t PositionOf(std::size_t i) const {
    return i < names_.size() ? static_cast<std::size_t>(names_[i]) : passed_.size() - 1 - i;
  }

  HRESULT ConvertAt(std::size_t i, const Parameter& parameter) {
    VARIANT& argument = passed_[i];
    if (!parameter.referenced || V_VT(&argument) == (VT_BYREF | *parameter.referenced)) {
      return S_OK;
    }
    if (!IsOmitted(argument)) {
      return ConvertInto(argument, argument, *parameter.referenced);
    }
    if (!parameter.whenOmitted) {
      return DISP_E_PARAMNOTOPTIONAL;
    }
    return ConvertInto(argument, Variant(*parameter.whenOmitted).get(), *parameter.referenced);
  }

  // Adds omitted parameters that have a default, as named arguments.
  HRESULT AddOmitted() {
    for (std::size_t position = 0; position < parameters_.size(); ++position) {
      const Parameter& parameter = parameters_[position];
      if (given_[position] || !parameter.whenOmitted || !parameter.referenced) {
        continue;
      }
      VARIANT argument{};
      const HRESULT result =
          ConvertInto(argument, Variant(*parameter.whenOmitted).get(), *parameter.referenced);
      if (FAILED(result)) {
        return result;
      }
      names_.insert(names_.begin(), static_cast<DISPID>(position));
      passed_.insert(passed_.begin(), argument);
    }
    return S_OK;
  }

  HRESULT ConvertInto(VARIANT& passed, const VARIANT& given, VARTYPE type) {
    ConvertedArgument& converted = converted_.emplace_back();
    const HRESULT result = converted.Convert(given, type);
    if (SUCCEEDED(result)) {
      passed = converted.passed();
    }
    return result;
  }

  const std::vector<Parameter>& parameters_;
  std::vector<DISPID> names_;
  std::vector<VARIANT> passed_;
  // By position: whether the caller passed it.
  std::vector<bool> given_;
  // A deque, because the arguments passed on point into it.
  std::deque<ConvertedArgument> converted_;
};

}  // namespace

HRESULT InvokeMember(ITypeInfo& typeInfo, IDispatch& object, DISPID member, WORD flags,
                     const DISPPARAMS& arguments, VARIANT* result, EXCEPINFO* exception,
                     UINT* argumentError) {
  const auto parameters = ParametersOf(typeInfo, member);
  if (!parameters) {
    return DISP_E_MEMBERNOTFOUND;
  }
  if (arguments.cArgs > parameters->size()) {
    return DISP_E_BADPARAMCOUNT;
  }
  Arguments converted(arguments, *parameters);
  UINT wrong = 0;
  HRESULT outcome = converted.Convert(wrong);
  if (FAILED(outcome)) {
    if (argumentError != nullptr) {
      *argumentError = wrong;
    }
    return outcome;
  }
  DISPPARAMS passed = converted.Passed();
  outcome = typeInfo.Invoke(&object, member, flags, &passed, result, exception, argumentError);
  return SUCCEEDED(outcome) ? converted.StoreBack() : outcome;
}

}  // namespace com
