// A registry in memory for native tests: a tree of keys with the system's codes, permissions and
// limits, and switches for failures that a healthy registry never has.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "fakes/registry_node.h"
#include "platform/registry_api.h"

namespace fakes {

// Key and value names ignore case and keep the case they were created with. Values are enumerated
// in order of creation, subkeys by name. A name or path ends at its first NUL, as in the system. A
// handle allows only the rights that it was opened with.
class MemoryRegistry : public platform::RegistryApi {
 public:
  static constexpr std::uint32_t kCurrentUser = 0x80000001;
  static constexpr std::uint32_t kLocalMachine = 0x80000002;

  static constexpr std::int32_t kInvalidHandle = 6;
  static constexpr std::int32_t kInvalidParameter = 87;
  static constexpr std::int32_t kBadPathName = 161;
  static constexpr std::int32_t kKeyDeleted = 1018;

  static constexpr std::size_t kLongestKeyName = 255;
  static constexpr std::size_t kLongestValueName = 16383;

  enum class Call {
    Open,
    Create,
    QueryLimits,
    EnumValue,
    EnumKey,
    SetValue,
    DeleteValue,
    DeleteKey
  };

  MemoryRegistry();

  // Set-up, regardless of permissions. `root` is a predefined key's number; missing keys of `path`
  // are created. The unnamed value has the name "".
  void MakeKey(std::uint32_t root, const std::u16string& path);
  void SetText(std::uint32_t root, const std::u16string& path, const std::u16string& name,
               const std::u16string& text);
  // A value of another type (4 is a number), four bytes long.
  void SetOther(std::uint32_t root, const std::u16string& path, const std::u16string& name,
                std::uint32_t type);
  // Gives the user only the right to read the key and everything below it.
  void DenyWrite(std::uint32_t root, const std::u16string& path);
  // Makes every call of this kind return `code`; kSuccess restores it.
  void Fail(Call call, std::int32_t code);
  // Enumerations repeat their last item endlessly.
  void EnumerateEndlessly() { endless_ = true; }

  bool KeyExists(std::uint32_t root, const std::u16string& path) const;
  bool ValueExists(std::uint32_t root, const std::u16string& path,
                   const std::u16string& name) const;
  // "" for a value that is missing or not text.
  std::u16string Text(std::uint32_t root, const std::u16string& path,
                      const std::u16string& name) const;
  // Handles that are still open.
  std::size_t OpenHandles() const { return handles_.size(); }

  std::int32_t OpenKey(Key parent, const std::u16string& path, std::uint32_t access,
                       Key& opened) override;
  std::int32_t CreateKey(Key parent, const std::u16string& path, std::uint32_t access, Key& opened,
                         std::uint32_t& disposition) override;
  std::int32_t QueryLimits(Key key, Limits& limits) override;
  std::int32_t EnumValue(Key key, std::uint32_t index, const Limits& limits,
                         ValueEntry& entry) override;
  std::int32_t EnumKey(Key key, std::uint32_t index, const Limits& limits,
                       std::u16string& name) override;
  std::int32_t SetTextValue(Key key, const std::u16string& name,
                            const std::u16string& text) override;
  std::int32_t DeleteValue(Key key, const std::u16string& name) override;
  std::int32_t DeleteKey(Key parent, const std::u16string& name) override;
  std::int32_t CloseKey(Key key) override;

 private:
  using Node = std::shared_ptr<RegistryNode>;
  struct Handle {
    std::weak_ptr<RegistryNode> node;
    std::uint32_t access = 0;
  };

  Node Find(std::uint32_t root, const std::u16string& path) const;
  Node Make(std::uint32_t root, const std::u16string& path);
  // The node of a predefined key, or of a handle with the right `access`. A code when this call is
  // set to fail, the handle is invalid, its key is deleted, or its rights are too few.
  std::int32_t Enter(Call call, Key key, std::uint32_t access, Node& node) const;
  // Like Enter with any rights, for a path below the key that the system accepts.
  std::int32_t EnterParent(Call call, Key parent, const std::u16string& path, Node& node) const;
  std::int32_t NewHandle(const Node& node, std::uint32_t access, Key& opened);

  std::map<std::uint32_t, Node> roots_;
  std::map<Key, Handle> handles_;
  std::map<Call, std::int32_t> failures_;
  Key lastHandle_ = 0;
  bool endless_ = false;
};

}  // namespace fakes
