// Word-processor documents, web pages, XML and rich text to rich or plain text, by the contract
// that the loader and the saving of editors were made for.
#pragma once

#include <cstdint>
#include <string>

#include "load/contract_codes.h"
#include "load/conversion_service.h"

namespace zorvane {

/// Target formats of `OpenWordSaveAs`.
enum class WordFormat : std::int32_t { Document = 0, PlainText = 2, RichText = 6, Html = 8 };

class TrellisPage {
  public:
    virtual ~TrellisPage() = default;
    virtual double WordVersion() const = 0;
    /// True keeps the word processor running between conversions.
    virtual bool OptimizeForSpeed() const = 0;
    virtual void putOptimizeForSpeed(bool keep) = 0;
    /// The target is written whole or not at all. Plain text comes in UTF-8, and a source that is
    /// plain text comes so in the rich format too.
    virtual WordResult OpenWordSaveAs(const std::string& sFile, const std::string& sTarget,
                                      WordFormat lFormat) = 0;
    virtual void HideWordIfVisible() = 0;
    /// What went wrong last and what to do, for a user.
    virtual std::string ErrorString() const = 0;

    std::string InputFile_PassWord;
    std::string InputFile_PassWord_TW;
    std::string InputFileTemplate_PassWord;
    std::string InputFileTemplate_PassWord_TW;
};

/// Reads RTF and text in this process, everything else in zorvane-convert, and what that cannot
/// read through an office suite. Saving as DOC takes an office suite.
class NativeTrellisPage : public TrellisPage {
  public:
    /// Both are borrowed. `observer` is told of progress.
    NativeTrellisPage(Platform& platform, ConversionService& service, ConversionObserver observer)
        : platform_(platform), service_(service), observer_(std::move(observer)) {}
    double WordVersion() const override { return 16.0; }
    bool OptimizeForSpeed() const override { return service_.OfficeStays(); }
    void putOptimizeForSpeed(bool keep) override { service_.SetOfficeStays(keep); }
    WordResult OpenWordSaveAs(const std::string& sFile, const std::string& sTarget,
                              WordFormat lFormat) override;
    /// Starts a conversion to plain or rich text that will be asked for soon, with the passwords as
    /// they stand; nothing for a file that is read in this process.
    void Expect(const std::string& sFile, WordFormat lFormat);
    void HideWordIfVisible() override {}  // nothing that could show is ever started
    std::string ErrorString() const override { return error_; }

  private:
    ConversionResult SaveAsDocument(const std::string& sFile, const std::string& sTarget);
    ConversionResult Convert(const std::string& sFile, const std::string& sTarget,
                             WordFormat lFormat);
    ConversionMessage Job(const std::string& sFile, const std::string& sTarget,
                          WordFormat lFormat) const;
    std::string Password() const;

    Platform& platform_;
    ConversionService& service_;
    ConversionObserver observer_;
    std::string error_;
};

}  // namespace zorvane
