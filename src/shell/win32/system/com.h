// COM for a short use: a thread's apartment, and objects that give themselves back.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include "platform/win32/unique.h"

namespace quilmark {

// A pointer to an object of COM, which counts one reference.
template <typename Interface>
struct ComTraits {
  using Value = Interface*;
  static Value Empty() { return nullptr; }
  static void Close(Value object) { object->Release(); }
};
template <typename Interface>
using UniqueCom = Unique<ComTraits<Interface>>;

// What a call of COM gave for an object, or nothing where it failed.
template <typename Interface>
UniqueCom<Interface> TakeCom(HRESULT result, Interface* object) {
  return UniqueCom<Interface>(SUCCEEDED(result) ? object : nullptr);
}

// Memory that COM has allocated, such as lists of item ids.
template <typename Pointed>
struct ComMemoryTraits {
  using Value = Pointed*;
  static Value Empty() { return nullptr; }
  static void Close(Value memory) { CoTaskMemFree(memory); }
};
using UniqueItemIds = Unique<ComMemoryTraits<ITEMIDLIST>>;

// Memory of the system that a clipboard or a drag carries.
struct GlobalTraits {
  using Value = HGLOBAL;
  static Value Empty() { return nullptr; }
  static void Close(Value memory) { GlobalFree(memory); }
};
using UniqueGlobal = Unique<GlobalTraits>;

// The calling thread is in an apartment of its own while this lives. One that is in another kind of
// apartment stays there, which serves as well.
class ComApartment {
 public:
  ComApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
  ~ComApartment() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

  // False where COM cannot be used.
  bool IsOpen() const { return SUCCEEDED(result_) || result_ == RPC_E_CHANGED_MODE; }

 private:
  HRESULT result_;
};

}  // namespace quilmark
