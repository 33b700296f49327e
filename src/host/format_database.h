#pragma once
// The format database: one file with the small tables that a print control reads.
//
//   auto database = openFormatDatabase("/tmp/x/format.db");
//   database->Execute("CREATE TABLE ZPDJ_Head (P1 String,P2 String)");
//   auto rows = database->OpenTable("ZPDJ_Head");
//   rows->AddNew(), rows->SetField("P1", "title"), rows->Update();
//
// Its only column type is String. Failures are RunTimeError.

#include <memory>
#include <string>

#include "platform/services.h"

namespace host {

// The file is made when it is first used. Name() is its path, by which a print control opens it again.
std::unique_ptr<platform::FormatDatabase> openFormatDatabase(std::string file);

}  // namespace host
