// clang-format off
#include <windows.h>
#include <shellapi.h>
// clang-format on
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "terminal.h"

namespace cli {
namespace {

HANDLE errorHandle() {
  return GetStdHandle(STD_ERROR_HANDLE);
}

std::string utf8(const wchar_t* text) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<std::size_t>(size > 0 ? size - 1 : 0), '\0');
  if (size > 1) WideCharToMultiByte(CP_UTF8, 0, text, -1, out.data(), size, nullptr, nullptr);
  return out;
}

}  // namespace

void prepareTerminal() {
  constexpr int binaryMode = 0x8000;  // line feeds stay line feeds, also where both outputs go into one file
  SetConsoleOutputCP(CP_UTF8);
  _setmode(_fileno(stdout), binaryMode);
  _setmode(_fileno(stderr), binaryMode);
  _setmode(_fileno(stdin), binaryMode);
}

bool inputIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
}

bool outputIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0;
}

bool outputIsFile() {
  return GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_DISK;
}

bool errorIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(errorHandle(), &mode) != 0;
}

std::size_t outputWidth() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) == 0) return 0;
  return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
}

std::size_t errorWidth() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (GetConsoleScreenBufferInfo(errorHandle(), &info) != 0)
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
  return 80;
}

std::size_t errorHeight() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (GetConsoleScreenBufferInfo(errorHandle(), &info) == 0) return 24;
  return static_cast<std::size_t>(info.srWindow.Bottom - info.srWindow.Top + 1);
}

bool errorTakesEscapes() {
  constexpr DWORD virtualTerminal = 0x0004;
  DWORD mode = 0;
  return GetConsoleMode(errorHandle(), &mode) != 0 && SetConsoleMode(errorHandle(), mode | virtualTerminal) != 0;
}

bool errorTakesColours() {
  const char* none = std::getenv("NO_COLOR");
  return errorTakesEscapes() && (none == nullptr || *none == '\0');
}

std::optional<std::string> askSecret(const std::string& question) {
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  DWORD shown = 0;
  if (GetConsoleMode(input, &shown) == 0) return std::nullopt;
  std::fputs(question.c_str(), stderr);
  std::fflush(stderr);
  SetConsoleMode(input, shown & ~static_cast<DWORD>(ENABLE_ECHO_INPUT));
  std::string line;
  const bool read = static_cast<bool>(std::getline(std::cin, line));
  SetConsoleMode(input, shown);
  std::fputs("\n", stderr);
  if (!read) return std::nullopt;
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

std::vector<std::string> programWords(int, char**) {
  int count = 0;
  wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> out;
  for (int i = 1; i < count; ++i) out.push_back(utf8(words[i]));
  LocalFree(words);
  return out;
}

}  // namespace cli
