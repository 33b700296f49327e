#pragma once
// The questions that the window system answers itself - files, printers, messages - behind one door, so that a test can
// be the person.

#include <QString>
#include <functional>
#include <memory>
#include <string>

class QPrinter;
class QWidget;

namespace desktop {

class Texts;

class Ask {
public:
  virtual ~Ask() = default;
  // A name that the person chose, with an ending of the filters; empty: the person left.
  virtual std::string saveFile(QWidget* parent, const QString& title, const QString& name, const QString& filters);
  virtual std::string folder(QWidget* parent, const QString& title, const QString& from);
  // The system's print dialog; null: the person left. A printer that prints into a file has its name.
  virtual std::unique_ptr<QPrinter> printer(QWidget* parent, const QString& title);
  virtual bool hasPrinters();
  virtual void complain(QWidget* parent, const QString& title, const QString& text);
  // Opens a file with the program that the system has for it.
  virtual bool open(const QString& file);
};

Ask& ask();
// For the time of a test; null: the window system again.
void setAsk(Ask* other);

}  // namespace desktop
