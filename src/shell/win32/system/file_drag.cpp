#include "shell/win32/system/file_drag.h"

#include <ole2.h>

#include <algorithm>
#include <atomic>
#include <utility>

#include "shell/win32/system/clipboard_files.h"

namespace quilmark {

namespace {

// The interfaces of COM have no virtual destructor: an object ends by its count alone.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// What the objects share: one interface beside IUnknown, and the count of references, from 1.
template <typename Interface>
class ComObject : public Interface {
 public:
  ComObject() = default;
  virtual ~ComObject() = default;
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, __uuidof(Interface))) return E_NOINTERFACE;
    *object = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 private:
  std::atomic<ULONG> references_ = 1;
};
#pragma GCC diagnostic pop

FORMATETC FormatOf(UINT format) {
  return {static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

std::vector<FORMATETC> FileFormats() { return {FormatOf(CF_HDROP), FormatOf(DropEffectFormat())}; }

bool IsOffered(const FORMATETC& asked) {
  const auto formats = FileFormats();
  return std::any_of(formats.begin(), formats.end(), [&](const FORMATETC& offered) {
    return asked.cfFormat == offered.cfFormat && asked.dwAspect == offered.dwAspect &&
           asked.lindex == offered.lindex && (asked.tymed & TYMED_HGLOBAL) != 0;
  });
}

class FormatEtcEnum final : public ComObject<IEnumFORMATETC> {
 public:
  FormatEtcEnum(std::vector<FORMATETC> formats, size_t position)
      : formats_(std::move(formats)), position_(position) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG count, FORMATETC* formats, ULONG* fetched) override {
    if (formats == nullptr || (fetched == nullptr && count != 1)) return E_INVALIDARG;
    const size_t given = std::min<size_t>(count, formats_.size() - position_);
    std::copy_n(formats_.begin() + static_cast<ptrdiff_t>(position_), given, formats);
    position_ += given;
    if (fetched != nullptr) *fetched = static_cast<ULONG>(given);
    return given == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const size_t skipped = std::min<size_t>(count, formats_.size() - position_);
    position_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    position_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumFORMATETC** clone) override {
    if (clone == nullptr) return E_POINTER;
    *clone = new FormatEtcEnum(formats_, position_);
    return S_OK;
  }

 private:
  std::vector<FORMATETC> formats_;
  size_t position_;
};

class FileDragDataObject final : public ComObject<IDataObject> {
 public:
  explicit FileDragDataObject(std::vector<std::u16string> paths) : paths_(std::move(paths)) {}

  HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
    if (format == nullptr || medium == nullptr) return E_INVALIDARG;
    if (!IsOffered(*format)) return DV_E_FORMATETC;
    UniqueGlobal block =
        format->cfFormat == CF_HDROP ? FilesBlock(paths_) : EffectBlock(DropEffect::kCopy);
    if (!block) return STG_E_MEDIUMFULL;
    *medium = {};
    medium->tymed = TYMED_HGLOBAL;
    medium->hGlobal = block.Release();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override {
    if (format == nullptr) return E_INVALIDARG;
    return IsOffered(*format) ? S_OK : DV_E_FORMATETC;
  }
  HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* canonical) override {
    if (canonical == nullptr) return E_INVALIDARG;
    canonical->ptd = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override {
    if (formats == nullptr) return E_POINTER;
    *formats = nullptr;
    if (direction != DATADIR_GET) return E_NOTIMPL;
    *formats = new FormatEtcEnum(FileFormats(), 0);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

 private:
  std::vector<std::u16string> paths_;
};

class FileDropSource final : public ComObject<IDropSource> {
 public:
  HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL isEscapePressed, DWORD keys) override {
    if (isEscapePressed) return DRAGDROP_S_CANCEL;
    return (keys & MK_LBUTTON) == 0 ? DRAGDROP_S_DROP : S_OK;
  }
  HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
};

// Dragging is part of OLE, which the thread has while this lives.
class OleUse {
 public:
  OleUse() : isOpen_(SUCCEEDED(OleInitialize(nullptr))) {}
  ~OleUse() {
    if (isOpen_) OleUninitialize();
  }
  OleUse(const OleUse&) = delete;
  OleUse& operator=(const OleUse&) = delete;

  bool IsOpen() const { return isOpen_; }

 private:
  bool isOpen_;
};

}  // namespace

UniqueCom<IDataObject> MakeFileData(std::vector<std::u16string> paths) {
  return UniqueCom<IDataObject>(new FileDragDataObject(std::move(paths)));
}

UniqueCom<IDropSource> MakeFileDropSource() { return UniqueCom<IDropSource>(new FileDropSource); }

bool DragFiles(const std::vector<std::u16string>& paths) {
  if (paths.empty()) return false;
  const OleUse ole;
  if (!ole.IsOpen()) return false;
  const auto data = MakeFileData(paths);
  const auto source = MakeFileDropSource();
  DWORD effect = DROPEFFECT_NONE;
  DoDragDrop(data.Get(), source.Get(), DROPEFFECT_COPY, &effect);
  return true;
}

}  // namespace quilmark
