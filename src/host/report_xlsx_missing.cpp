// Stands in for report_xlsx.cpp where the library of workbooks is not there.

#include <stdexcept>

#include "host/report_file.h"

namespace host {

bool canMakeWorkbooks() {
  return false;
}

void writeReportXlsx(const std::string&, const ReportModel&) {
  throw std::runtime_error("this program was built without workbooks");
}

}  // namespace host
