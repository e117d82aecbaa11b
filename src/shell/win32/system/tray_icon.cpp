#include "shell/win32/system/tray_icon.h"

#include <algorithm>
#include <utility>

#include "platform/win32/wide.h"
#include "shell/view/window_ids.h"

namespace quilmark {

static_assert(sizeof(NOTIFYICONDATAW) == 976);

// As much of the text as there is room for.
template <size_t kRoom>
static void CopyCut(std::u16string_view text, wchar_t (&room)[kRoom]) {
  const size_t length = std::min(text.size(), kRoom - 1);
  std::copy_n(text.begin(), length, room);
  room[length] = 0;
}

void TrayIcon::Prepare(HWND window) {
  record_.cbSize = sizeof record_;
  record_.hWnd = window;
  record_.uID = 1;
  record_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  record_.uCallbackMessage = kTrayCallback;
  if (record_.hIcon != nullptr) return;
  owned_.Reset(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kAppIcon),
                                             IMAGE_ICON, GetSystemMetrics(SM_CXSMICON),
                                             GetSystemMetrics(SM_CYSMICON), LR_DEFAULTCOLOR)));
  record_.hIcon = owned_ ? owned_.Get() : LoadIconW(nullptr, IDI_APPLICATION);
}

void TrayIcon::TakePicture(UniqueIcon icon) {
  if (!icon) return;
  record_.hIcon = icon.Get();
  owned_ = std::move(icon);
}

TrayIconState TrayIcon::AddOrUpdate(bool isAdded, const std::u16string& tip) {
  CopyCut(tip, record_.szTip);
  return PutTrayIcon(isAdded, [this](TrayCall call) {
    return Shell_NotifyIconW(call == TrayCall::kAdd ? NIM_ADD : NIM_MODIFY, &record_) != FALSE;
  });
}

void TrayIcon::ShowBalloon(std::u16string_view title, std::u16string_view text) {
  constexpr UINT kShownMs = 10'000;
  NOTIFYICONDATAW note = record_;
  note.uFlags |= NIF_INFO;
  note.dwInfoFlags = NIIF_INFO;
  note.uTimeout = kShownMs;
  CopyCut(title, note.szInfoTitle);
  CopyCut(text, note.szInfo);
  Shell_NotifyIconW(NIM_MODIFY, &note);
}

void TrayIcon::Remove() {
  Shell_NotifyIconW(NIM_DELETE, &record_);
  owned_.Reset();
  record_.hIcon = nullptr;
}

}  // namespace quilmark
