"""The component's interfaces as a compiler other than C++ wants them declared."""

PASCAL = {"I2": "Smallint", "I4": "Integer", "BSTR": "WideString", "BOOL": "WordBool",
          "IDispatch*": "IDispatch"}
CSHARP = {"I2": "short", "I4": "int", "BSTR": "string", "BOOL": "bool", "IDispatch*": "object"}
_MARSHALLED = {"BSTR": "BStr", "BOOL": "VariantBool", "IDispatch*": "IDispatch"}


def _signed(number):
    return number - (1 << 32) if number >= 1 << 31 else number


# --- Object Pascal: Delphi and Free Pascal.

def _pascal_parameters(operation):
    texts = [("var " if one.by_reference else "const ") + f"{one.name}: {PASCAL[one.type]}"
             for one in operation.parameters]
    return f"({'; '.join(texts)})" if texts else ""


def pascal_operation(operation):
    head = f"{operation.name}{_pascal_parameters(operation)}"
    if operation.result:
        return f"function {head}: {PASCAL[operation.result]}; safecall;"
    return f"procedure {head}; safecall;"


def _pascal_interface(interface):
    yield ""
    if interface.is_events:
        yield f"  {interface.name} = dispinterface"
        yield f"    ['{interface.identifier}']"
        for one in interface.operations:
            yield f"    procedure {one.name}; dispid {_signed(one.id)};"
    else:
        yield f"  {interface.name} = interface(IDispatch)"
        yield f"    ['{interface.identifier}']"
        yield from (f"    {pascal_operation(one)}" for one in interface.operations)
    yield "  end;"


def _pascal_constants(library):
    yield f"  LIBID_{library.name}: TGUID = '{library.identifier}';"
    for one in library.interfaces:
        kind = "DIID" if one.is_events else "IID"
        yield f"  {kind}_{one.name}: TGUID = '{one.identifier}';"
    for one in library.classes:
        yield f"  CLASS_{one.name}: TGUID = '{one.identifier}';"
    for interface in library.interfaces:
        if interface.is_events:
            for one in interface.operations:
                yield f"  DISPID_{one.name} = {_signed(one.id)};"


def pascal(library, title):
    """Vilnor_TLB.pas."""
    creators, bodies = [], []
    for one in library.classes:
        creators += ["", f"  Co{one.name} = class",
                     f"    class function Create: {one.interface};", "  end;"]
        bodies += ["", f"class function Co{one.name}.Create: {one.interface};", "begin",
                   f"  Result := CreateComObject(CLASS_{one.name}) as {one.interface};", "end;"]
    interfaces = [line for one in library.interfaces for line in _pascal_interface(one)]
    return "\n".join([
        f"// {title}", f"unit {library.name}_TLB;", "",
        "{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}", "", "interface", "", "uses ActiveX, ComObj;", "",
        "const", *_pascal_constants(library), "", "type", *interfaces[1:], *creators, "",
        "implementation", *bodies, "", "end.", ""])


# --- C#.

def _csharp_value(kind):
    return f"[{{}}MarshalAs(UnmanagedType.{_MARSHALLED[kind]})] " if kind in _MARSHALLED else ""


def _csharp_parameter(parameter):
    by_reference = "ref " if parameter.by_reference else ""
    return _csharp_value(parameter.type).format("") + \
        f"{by_reference}{CSHARP[parameter.type]} {parameter.name}"


def _csharp_operation(operation):
    yield f"        [DispId({_signed(operation.id)})]"
    if operation.result in _MARSHALLED:
        yield "        " + _csharp_value(operation.result).format("return: ").rstrip()
    result = CSHARP.get(operation.result, "void")
    parameters = ", ".join(map(_csharp_parameter, operation.parameters))
    yield f"        {result} {operation.name}({parameters});"


def _csharp_interface(interface):
    kind = "InterfaceIsIDispatch" if interface.is_events else "InterfaceIsDual"
    yield ""
    yield f'    [ComImport, Guid("{interface.identifier[1:-1]}"),'
    yield f"     InterfaceType(ComInterfaceType.{kind})]"
    yield f"    public interface {interface.name}"
    yield "    {"
    for one in interface.operations:
        yield from _csharp_operation(one)
    yield "    }"


def _csharp_class(described):
    yield ""
    yield f'    [ComImport, Guid("{described.identifier[1:-1]}"),'
    yield "     ClassInterface(ClassInterfaceType.None)]"
    yield f"    public class {described.name}"
    yield "    {"
    yield "    }"


def csharp(library, title):
    """Vilnor.cs."""
    parts = [line for one in library.interfaces for line in _csharp_interface(one)]
    parts += [line for one in library.classes for line in _csharp_class(one)]
    return "\n".join([f"// {title}", "using System.Runtime.InteropServices;", "",
                        f"namespace {library.name}", "{", *parts[1:], "}", ""])
