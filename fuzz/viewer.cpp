// Any bytes as an exchange file, shown by the viewer; viewer.py checks the page. The viewer is
// Python, so its executed lines, in order, are reported to libFuzzer as coverage.
#include <Python.h>
// Must follow Python.h.
#include <cstdint>
#include <cstdlib>
#include <frameobject.h>
#include <string_view>
#include <unordered_map>

namespace {

// libFuzzer adds these counters to the coverage of compiled code.
__attribute__((section("__libfuzzer_extra_counters"))) std::uint8_t steps[1 << 14];

PyObject* hold = nullptr;

// A number for each function of the viewer, 0 for any other.
std::size_t NumberOf(PyCodeObject* code) {
  static std::unordered_map<PyCodeObject*, std::size_t> numbers;
  const auto [known, isNew] = numbers.try_emplace(code, 0);
  if (isNew) {
    // Never released: another function could otherwise get the same address.
    Py_INCREF(code);
    const std::string_view file = PyUnicode_AsUTF8(code->co_filename);
    known->second = file.find("/exchange_page/") == file.npos ? 0 : numbers.size();
  }
  return known->second;
}

int CountStep(PyObject* /*self*/, PyFrameObject* frame, int event, PyObject* /*argument*/) {
  static std::size_t before = 0;
  PyCodeObject* const code = PyFrame_GetCode(frame);
  const std::size_t function = NumberOf(code);
  Py_DECREF(code);
  if (event == PyTrace_CALL && function == 0) {
    // Suppresses its line events.
    return PyObject_SetAttrString(reinterpret_cast<PyObject*>(frame), "f_trace_lines", Py_False);
  }
  if (event == PyTrace_LINE && function != 0) {
    const std::size_t line =
        function * 911 + static_cast<std::size_t>(PyFrame_GetLineNumber(frame));
    std::uint8_t& step = steps[(line * 31 + before) % sizeof(steps)];
    step += step == UINT8_MAX ? 0 : 1;
    before = line;
  }
  return 0;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
  Py_InitializeEx(0);
  PyRun_SimpleString("import sys; sys.path.insert(0, 'fuzz')");
  PyObject* const viewer = PyImport_ImportModule("viewer");
  hold = viewer == nullptr ? nullptr : PyObject_GetAttrString(viewer, "hold");
  if (hold == nullptr) {
    PyErr_Print();
    std::abort();
  }
  PyEval_SetTrace(CountStep, nullptr);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  PyObject* const content =
      PyBytes_FromStringAndSize(reinterpret_cast<const char*>(data), static_cast<Py_ssize_t>(size));
  PyObject* const nothing = PyObject_CallOneArg(hold, content);
  if (nothing == nullptr) {
    PyErr_Print();
    std::abort();
  }
  Py_DECREF(nothing);
  Py_DECREF(content);
  return 0;
}
