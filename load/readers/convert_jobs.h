// The conversions of zorvane-convert, one function for each kind of request.
#pragma once

#include <string_view>

#include "load/conversion_message.h"
#include "load/readers/job_output.h"
#include "load/readers/reader.h"

namespace zorvane {

/// Carries out the request by its "kind" on the bytes of a document:
///   word    format (2, 6, 8), name, password, locale
///   pdftext user, owner, first, last, delta
///   pdfrich user, owner, first, last, and the settings by their keys
///   pdfpages user, owner; answers "pages"
///   sheets  sheets, formulas, values, password; answers "sheets" and, from 1, "sheet1", ...
///   sheetnames password; answers likewise
///   slides  format (6 or 200), first, last, numbers, notes, notesonly, password
/// Sheets make a part each, the other conversions one.
ReadEnd RunJob(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
               JobOutput& output);

}  // namespace zorvane
