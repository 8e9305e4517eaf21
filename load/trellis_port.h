// PDF to plain text, quickly.
#pragma once

#include <cstdint>
#include <string>

#include "load/contract_codes.h"
#include "load/conversion_service.h"

namespace zorvane {

class TrellisPort {
  public:
    /// `service` is borrowed.
    TrellisPort(ConversionService& service, ConversionObserver observer)
        : service_(service), observer_(std::move(observer)) {}

    std::string InputFile;
    std::string OutputFile;
    std::string PasswordOwner;
    std::string PasswordUser;
    std::int32_t TargetFileType = 1;  ///< plain text, the only one there is
    /// Largest horizontal distance in points at which two equal characters on top of one another
    /// count as one.
    double tsSetDupMaxDeltaX = 0;
    std::int32_t FirstPage = 0;  ///< 0 and 0: the whole file
    std::int32_t LastPage = 0;

    /// Number of pages, or a negative error code.
    std::int32_t GetNumberOfPages();
    /// 0, or an error code as `ReportTrellisPortError` knows it.
    std::int32_t ConvertPDFToFile();
    /// The reader's own words on the last failure.
    const std::string& ErrorDetail() const { return detail_; }
    bool Cancelled() const { return cancelled_; }

  private:
    std::int32_t Take(const ConversionResult& result);
    ConversionMessage Job(const char* kind) const;

    ConversionService& service_;
    ConversionObserver observer_;
    std::string detail_;
    bool cancelled_ = false;
};

/// Only codes from -12 to 6 have a text, and of these not all.
std::string ReportTrellisPortError(std::int32_t lCode);

}  // namespace zorvane
