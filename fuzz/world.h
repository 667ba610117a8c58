// The platform for a fuzzer: doubles, the real parser, and a private folder in memory.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

#include "automation/text.h"
#include "fakes/ports.h"
#include "platform/thread_state.h"
#include "util/session_settings.h"

// libFuzzer or replay.cpp calls this with each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

// Ends the run, as a sanitizer does, if the condition is false.
inline void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

inline std::string Bytes(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};  // NOLINT: bytes are characters here
}

// The input as UTF-16 units, in pairs of bytes.
inline std::u16string Units(const std::uint8_t* data, std::size_t size) {
  std::u16string text;
  for (std::size_t i = 0; i + 1 < size; i += 2) {
    text += static_cast<char16_t>(data[i] | data[i + 1] << 8);
  }
  return text;
}

// Like Units, but one unit per byte, which keeps most inputs readable.
inline std::u16string Latin1(const std::uint8_t* data, std::size_t size) {
  return {data, data + size};
}

// A folder in memory, private to the process.
class Folder {
 public:
  Folder() { std::filesystem::create_directories(path); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path); }

  std::filesystem::path path =
      std::filesystem::path("/dev/shm") / ("vilnor-fuzz-" + std::to_string(::getpid()));
};

// New for each input.
class World : public fakes::Ports {
 public:
  World() {
    platform::Use(ports);
    locale.UseSwedish();
    util::CurrentSettings() = {.gConnectionParameter = u"Driver=Fake",
                               .gKestraLangID = 1,
                               .gDbType = 1,
                               .gDateFormat = u"yyyy-MM-dd"};
  }
  World(const World&) = delete;
  World& operator=(const World&) = delete;
  ~World() {
    platform::Use(ports);
    platform::ForgetThreadState();
  }

  static const std::filesystem::path& Place() {
    static const Folder folder;
    return folder.path;
  }
  static void Put(const std::string& name, std::string_view bytes) {
    std::ofstream(Place() / name, std::ios::binary) << bytes;
  }
  static void Empty() {
    std::filesystem::remove_all(Place());
    std::filesystem::create_directory(Place());
  }
  // Whether a file exists whose name begins with this.
  static bool HasAny(const std::string& beginning) {
    return std::any_of(std::filesystem::directory_iterator(Place()), {}, [&](const auto& file) {
      return file.path().filename().string().starts_with(beginning);
    });
  }
  static std::u16string PathOf(const std::string& name) {
    return automation::FromUtf8((Place() / name).string());
  }
};

}  // namespace fuzz
