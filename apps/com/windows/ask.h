#pragma once
// The questions that the window system answers itself - files, printers, messages - behind one door, so that a test can
// be the person.

#include <windows.h>

#include <memory>
#include <string>

namespace windows {

// A printer that a person has chosen. Its operations are those of the window system; false: the printer reports an
// error.
class Printer {
public:
  // Takes both over. settings: DEVMODEW, may be null.
  Printer(HDC device, HGLOBAL settings) : device_(device), settings_(settings) {}
  virtual ~Printer();
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;

  HDC device() const { return device_; }
  // Points. What a layout says about the sheet goes before what the person has chosen.
  virtual void setPaper(double width, double height);
  virtual bool begin(const std::wstring& title);
  virtual bool beginPage();
  virtual bool endPage();
  virtual bool finish();
  virtual void withdraw();

private:
  HDC device_;
  HGLOBAL settings_;
};

class Ask {
public:
  virtual ~Ask() = default;
  // The file that a print goes to, with one of the endings that the print control takes; empty: the person left. name:
  // what is offered, without an ending.
  virtual std::string printFile(HWND owner, const std::string& title, const std::string& name);
  virtual bool hasPrinters();
  virtual std::shared_ptr<Printer> printer(HWND owner);  // null: the person left
  virtual void complain(HWND owner, const std::string& title, const std::string& text);
};

}  // namespace windows
