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
  // A file that the person chose and lets be replaced if it is there, with an ending of the filters ("PDF
  // (*.pdf);;..."); empty: the person left.
  virtual std::string saveFile(QWidget* parent, const QString& title, const QString& name, const QString& filters);
  virtual std::string folder(QWidget* parent, const QString& title, const QString& from);
  // The system's print dialog; null: the person left. A printer that prints into a file has its name.
  virtual std::unique_ptr<QPrinter> printer(QWidget* parent, const QString& title);
  virtual bool hasPrinters();
  virtual void complain(QWidget* parent, const QString& title, const QString& text);
  // Opens a file with the program that the system has for it.
  virtual bool open(const QString& file);

protected:
  // The system's file dialog; empty: the person left. chosen: the filter that it stood on. It asks about no file that
  // is there: the name may get another ending yet.
  virtual QString fileDialog(QWidget* parent, const QString& title, const QString& path, const QString& filters,
                             QString& chosen);
  virtual bool mayReplace(QWidget* parent, const QString& title, const QString& file);
};

// The name that a person means who chose the filter: with its ending, in place of the one that was proposed; an ending
// of another filter that was typed stands as long as the filter is the first one, the proposal's. What is no ending of
// the filters ("year 2006.01") belongs to the name.
QString withEnding(const QString& file, const QString& proposed, const QString& filters, const QString& chosen);

Ask& ask();
// For the time of a test; null: the window system again.
void setAsk(Ask* other);

}  // namespace desktop
