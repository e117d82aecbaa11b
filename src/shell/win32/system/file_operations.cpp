#include "shell/win32/system/file_operations.h"

#include <shellapi.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/text.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"
#include "platform/win32/wine_volumes.h"
#include "shell/actions/deletion.h"
#include "shell/actions/shell_paths.h"
#include "shell/win32/system/com.h"

namespace quilmark {

namespace {

// Without the last the shell would delete the folder "page_files" with a "page.htm".
constexpr DWORD kSilently = FOF_NOCONFIRMATION | FOF_SILENT | FOF_NOERRORUI | FOF_NO_CONNECTED_ELEMENTS;

DWORD FlagsOf(Undo undo) { return kSilently | (undo == Undo::kYes ? FOF_ALLOWUNDO : 0); }

constexpr DWORD kLongestName = 32'768;  // units of a path, with its NUL

UniqueCom<IFileOperation> MakeFileOperation() {
  IFileOperation* operation = nullptr;
  const HRESULT result =
      CoCreateInstance(CLSID_FileOperation, nullptr, CLSCTX_ALL, IID_PPV_ARGS(&operation));
  return TakeCom(result, operation);
}

UniqueCom<IShellItem> ItemOf(const std::u16string& path) {
  IShellItem* item = nullptr;
  const HRESULT result = SHCreateItemFromParsingName(Wide(path), nullptr, IID_PPV_ARGS(&item));
  return TakeCom(result, item);
}

struct SystemEntries final : EntryCalls {
  uint32_t AttributesOf(const std::u16string& path) override {
    return GetFileAttributesW(Wide(LongPathOf(path)));
  }
  bool SetAttributes(const std::u16string& path, uint32_t attributes) override {
    return SetFileAttributesW(Wide(LongPathOf(path)), attributes) != FALSE;
  }
  // Names come from the root of their volume on.
  std::vector<std::u16string> OtherNamesOf(const std::u16string& path) override {
    std::vector<std::u16string> names;
    if (IsWine()) return names;  // it ends a program that calls what it has not
    const std::u16string drive = path.substr(0, 2);
    bool isOfDrive = false;
    std::wstring name(kLongestName, L'\0');
    DWORD length = kLongestName;
    const HANDLE find = FindFirstFileNameW(Wide(LongPathOf(path)), 0, &length, name.data());
    if (find == INVALID_HANDLE_VALUE) return names;
    do {
      std::u16string other = drive + std::u16string(FromWide(name.c_str()));
      if (EqualNoCase(other, path)) {
        isOfDrive = true;
      } else {
        names.push_back(std::move(other));
      }
      length = kLongestName;
    } while (FindNextFileNameW(find, &length, name.data()) != FALSE);
    FindClose(find);
    // The letter may stand for a folder: then these are names of nothing, or of another file.
    return isOfDrive ? names : std::vector<std::u16string>();
  }
  bool RemoveFolder(const std::u16string& path) override {
    return RemoveDirectoryW(Wide(LongPathOf(path))) != FALSE;
  }
  bool RemoveFile(const std::u16string& path) override {
    return DeleteFileW(Wide(LongPathOf(path))) != FALSE;
  }
};
static_assert(kNoAttributes == INVALID_FILE_ATTRIBUTES &&
              kReadOnlyAttribute == FILE_ATTRIBUTE_READONLY &&
              kHiddenAttribute == FILE_ATTRIBUTE_HIDDEN && kSystemAttribute == FILE_ATTRIBUTE_SYSTEM &&
              kFolderAttribute == FILE_ATTRIBUTE_DIRECTORY &&
              kLinkAttribute == FILE_ATTRIBUTE_REPARSE_POINT &&
              kNormalAttribute == FILE_ATTRIBUTE_NORMAL);

}  // namespace

bool DeleteByFileOperation(const std::u16string& path, Undo undo) {
  const ComApartment apartment;
  if (!apartment.IsOpen()) return false;
  const auto operation = MakeFileOperation();
  if (!operation || FAILED(operation.Get()->SetOperationFlags(FlagsOf(undo)))) return false;
  const auto item = ItemOf(path);
  if (!item || FAILED(operation.Get()->DeleteItem(item.Get(), nullptr))) return false;
  if (FAILED(operation.Get()->PerformOperations())) return false;
  BOOL isAborted = TRUE;
  return SUCCEEDED(operation.Get()->GetAnyOperationsAborted(&isAborted)) && !isAborted;
}

bool DeleteByShellCall(HWND owner, const std::u16string& path, Undo undo) {
  std::u16string list = path;
  list.push_back(u'\0');  // and the string's own NUL: the list has one path
  SHFILEOPSTRUCTW operation = {};
  operation.hwnd = owner;
  operation.wFunc = FO_DELETE;
  operation.pFrom = Wide(list);
  operation.fFlags = static_cast<FILEOP_FLAGS>(FlagsOf(undo));
  return SHFileOperationW(&operation) == 0 && !operation.fAnyOperationsAborted;
}

bool DeleteByFileCalls(const std::u16string& path) {
  SystemEntries entries;
  return DeleteEntry(entries, path);
}

void ExecuteVerb(HWND owner, ShellVerb verb, const std::u16string& path) {
  static constexpr const wchar_t* kVerbs[] = {L"open", L"runas", L"properties"};
  const ComApartment apartment;  // handlers of verbs need one
  SHELLEXECUTEINFOW info = {};
  info.cbSize = sizeof info;
  info.fMask = SEE_MASK_FLAG_NO_UI | (verb == ShellVerb::kProperties ? SEE_MASK_INVOKEIDLIST : 0);
  info.hwnd = owner;
  info.lpVerb = kVerbs[static_cast<size_t>(verb)];
  info.lpFile = Wide(path);
  // A program expects its own folder, and not that of this one.
  const std::u16string folder = ParentOfPath(path).value_or(u"");
  if (!folder.empty() && folder.size() < MAX_PATH) info.lpDirectory = Wide(folder);
  info.nShow = SW_SHOWNORMAL;
  ShellExecuteExW(&info);
}

bool StartExplorer(HWND owner, const std::u16string& arguments) {
  // By its full path: an elevated program must not take one from its current folder, nor from the
  // Windows folder of his own that a terminal server gives a user.
  wchar_t folder[MAX_PATH] = {};
  const UINT length = GetSystemWindowsDirectoryW(folder, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return false;
  const std::u16string program = std::u16string(FromWide(folder)) + u"\\explorer.exe";
  const ComApartment apartment;
  const auto result = reinterpret_cast<INT_PTR>(
      ShellExecuteW(owner, L"open", Wide(program), Wide(arguments), folder, SW_SHOWNORMAL));
  return result > 32;
}

}  // namespace quilmark
