#include "ask.h"

#include <windows.h>
// after it
#include <commdlg.h>
#include <winspool.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "common_controls.h"
#include "host/print/page_print.h"
#include "wide_text.h"

namespace windows {
namespace {

std::wstring filterOf(std::string_view ending) {
  std::wstring upper = wide(ending.substr(1));
  CharUpperW(upper.data());
  return upper + L" (*" + wide(ending) + L")" + L'\0' + L"*" + wide(ending) + L'\0';
}

}  // namespace

Printer::~Printer() {
  if (device_) DeleteDC(device_);
  if (settings_) GlobalFree(settings_);
}

void Printer::setPaper(double width, double height) {
  auto* mode = settings_ ? static_cast<DEVMODEW*>(GlobalLock(settings_)) : nullptr;
  if (!mode) return;
  const auto tenths = [](double points) {
    constexpr double tenthsOfMillimetrePerPoint = 254.0 / 72;
    return static_cast<short>(std::lround(points * tenthsOfMillimetrePerPoint));
  };
  mode->dmOrientation = width > height ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
  mode->dmPaperSize = DMPAPER_USER;
  mode->dmPaperWidth = tenths(std::min(width, height));
  mode->dmPaperLength = tenths(std::max(width, height));
  mode->dmFields |= DM_ORIENTATION | DM_PAPERSIZE | DM_PAPERWIDTH | DM_PAPERLENGTH;
  ResetDCW(device_, mode);
  GlobalUnlock(settings_);
}

bool Printer::begin(const std::wstring& title) {
  DOCINFOW document{};
  document.cbSize = sizeof document;
  document.lpszDocName = title.c_str();
  return StartDocW(device_, &document) > 0;
}

bool Printer::beginPage() {
  return StartPage(device_) > 0;
}

bool Printer::endPage() {
  return EndPage(device_) > 0;
}

bool Printer::finish() {
  return EndDoc(device_) > 0;
}

void Printer::withdraw() {
  AbortDoc(device_);
}

std::string Ask::printFile(HWND owner, const std::string& title, const std::string& name) {
  const CommonControls themed;
  const std::string_view usual = host::PagePrint::canPrint(".pdf") ? ".pdf" : ".txt";
  std::wstring filters = filterOf(usual);
  if (usual != ".txt") filters += filterOf(".txt");
  const std::wstring caption = wide(title), ending = wide(usual.substr(1));
  std::array<wchar_t, 32768> file{};  // the longest name of a file
  wide(name).copy(file.data(), file.size() - 1);
  OPENFILENAMEW wanted{};
  wanted.lStructSize = sizeof wanted;
  wanted.hwndOwner = owner;
  wanted.lpstrFilter = filters.c_str();
  wanted.lpstrFile = file.data();
  wanted.nMaxFile = static_cast<DWORD>(file.size());
  wanted.lpstrTitle = caption.c_str();
  wanted.lpstrDefExt = ending.c_str();
  // The folder that the program works in stays: it is the program's.
  wanted.Flags = OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  for (;;) {
    if (!GetSaveFileNameW(&wanted)) return {};
    const std::string chosen = narrow(file.data());
    if (host::PagePrint::canPrint(chosen)) return chosen;
    complain(owner, title, chosen + " (" + std::string(host::PagePrint::endings()) + ")");
  }
}

bool Ask::hasPrinters() {
  DWORD needed = 0, count = 0;
  constexpr DWORD kinds = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
  // Without room for any, one that is there is an error.
  if (EnumPrintersW(kinds, nullptr, 4, nullptr, 0, &needed, &count)) return count > 0;
  return GetLastError() == ERROR_INSUFFICIENT_BUFFER;
}

std::shared_ptr<Printer> Ask::printer(HWND owner) {
  const CommonControls themed;
  PRINTDLGW wanted{};
  wanted.lStructSize = sizeof wanted;
  wanted.hwndOwner = owner;
  wanted.Flags = PD_RETURNDC | PD_USEDEVMODECOPIESANDCOLLATE | PD_NOPAGENUMS | PD_NOSELECTION;
  const bool chosen = PrintDlgW(&wanted) && wanted.hDC;
  if (wanted.hDevNames) GlobalFree(wanted.hDevNames);
  const auto printer = std::make_shared<Printer>(wanted.hDC, wanted.hDevMode);
  return chosen ? printer : nullptr;
}

void Ask::complain(HWND owner, const std::string& title, const std::string& text) {
  const CommonControls themed;
  MessageBoxW(owner, wide(text).c_str(), wide(title).c_str(), MB_OK | MB_ICONWARNING | MB_TASKMODAL);
}

}  // namespace windows
