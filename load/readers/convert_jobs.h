// The conversions of zorvane-convert, one function for each kind of request.
#pragma once

#include "load/conversion_message.h"
#include "load/readers/reader.h"

namespace zorvane {

/// Carries out the request by its "kind":
///   word    source, target, format (2, 6, 8), name, password, locale
///   pdftext source, target, user, owner, first, last, delta
///   pdfrich source, target, user, owner, first, last, and the settings by their keys
///   pdfpages source, user, owner; answers "pages"
///   sheets  source, target, sheets, formulas, values, password; answers "files" and, from 1,
///           "file1", "sheet1", ...
///   sheetnames source, password; answers "sheets" and "sheet1", ...
///   slides  source, target, format (6 or 200), first, last, numbers, notes, notesonly, password
/// A target is written whole or not at all.
ReadEnd RunJob(const ConversionMessage& job, ReadMonitor& monitor, ConversionMessage& answer);

}  // namespace zorvane
