// PDF to rich text with its formatting, under the option names of the settings.
#pragma once

#include <cstdint>
#include <string>

#include "load/contract_codes.h"
#include "load/conversion_service.h"
#include "options/compare_files_settings.h"

namespace zorvane {

class EasyConverter {
  public:
    /// Both are borrowed; the options are read at each conversion.
    EasyConverter(ConversionService& service, const CompareFilesSettings& settings,
                  ConversionObserver observer)
        : service_(service), settings_(settings), observer_(std::move(observer)) {}

    /// `pages` is filled on success.
    EasyError CountPages(const std::string& sFile, const std::string& sPassword,
                         std::int32_t& pages);
    /// Pages 0 and 0: all. The target is written whole or not at all.
    EasyError Convert(const std::string& sFile, const std::string& sTarget,
                      const std::string& sPassword, std::int32_t first, std::int32_t last);
    /// Starts a conversion that will be asked for soon.
    void Expect(const std::string& sFile, const std::string& sPassword);
    /// The reader's own words on the last failure.
    const std::string& ErrorDetail() const { return detail_; }

  private:
    ConversionMessage RichJob(const std::string& sFile, const std::string& sTarget,
                              const std::string& sPassword, std::int32_t first,
                              std::int32_t last) const;
    ConversionMessage Job(const char* kind, const std::string& sFile,
                          const std::string& sPassword) const;
    EasyError Take(const ConversionResult& result, const std::string& sFile);

    ConversionService& service_;
    const CompareFilesSettings& settings_;
    ConversionObserver observer_;
    std::string detail_;
};

std::string ReportBCLError(EasyError error);

}  // namespace zorvane
