"""Each operation as the host's languages write it."""

from declarations import CSHARP, pascal_operation

_CPP = {"I2": "SHORT", "I4": "LONG", "BOOL": "VARIANT_BOOL"}
_BASIC = {"I2": "Integer", "I4": "Long", "BSTR": "String", "BOOL": "Boolean", "IDispatch*": "Object"}
# Arguments into which an operation writes.
WRITTEN = {"ErrCode", "ErrMsg"}
# $PID is the shell's own variable.
_SHELL_NAMES = {"PID": "patientId"}


def cpp(operation, _object):
    parts = [f"{_CPP.get(one.type, one.type)}{'*' if one.by_reference else ''} {one.name}"
             for one in operation.parameters]
    if operation.result:
        parts.append(f"{_CPP.get(operation.result, operation.result)}* result")
    return f"HRESULT {operation.name}({', '.join(parts)});"


def pascal(operation, _object):
    return pascal_operation(operation)


def basic(operation, _object):
    parts = [("Optional " if one.optional else "") + ("" if one.by_reference else "ByVal ")
             + f"{one.name} As {_BASIC[one.type]}" for one in operation.parameters]
    if operation.result:
        return f"Function {operation.name}({', '.join(parts)}) As {_BASIC[operation.result]}"
    return f"Sub {operation.name}({', '.join(parts)})"


def vbscript(operation, object_):
    names = ", ".join(one.name for one in operation.parameters)
    if not operation.result:
        return f"{object_}.{operation.name} {names}".rstrip()
    assigned = "Set rows" if operation.result == "IDispatch*" else "result"
    return f"{assigned} = {object_}.{operation.name}({names})"


def sharp(operation, _object):
    parts = [f"{'ref ' if one.by_reference else ''}{CSHARP[one.type]} {one.name}"
             for one in operation.parameters]
    return f"{CSHARP.get(operation.result, 'void')} {operation.name}({', '.join(parts)});"


def powershell(operation, object_):
    names = [f"{'[ref]' if one.by_reference else ''}${_SHELL_NAMES.get(one.name, one.name)}"
             for one in operation.parameters]
    assigned = {"": "", "IDispatch*": "$rows = "}.get(operation.result, "$result = ")
    return f"{assigned}${object_}.{operation.name}({', '.join(names)})"


# The id of its choice on the page, its name, its way to write an operation.
LANGUAGES = (("cpp", "C++", cpp), ("pascal", "Object Pascal", pascal), ("basic", "VB6, VBA", basic),
             ("vbscript", "VBScript", vbscript), ("sharp", "C#", sharp),
             ("powershell", "PowerShell", powershell))

# How each language handles an event.
EVENTS = {
    "cpp": "HRESULT Invoke(DISPID event, …);  // {id}",
    "pascal": "procedure {name};  // dispid {id}",
    "basic": "Private Sub vilnor_{name}()",
    "vbscript": "Sub vilnor_{name}  ' WScript.ConnectObject vilnor, \"vilnor_\"",
    "sharp": "[DispId({id})] void {name}();",
    "powershell": "# a C# class by Add-Type, connected by IConnectionPoint.Advise",
}
