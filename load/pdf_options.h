// What a conversion of PDF is asked for, as the program says it and the reader hears it.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>

#include "load/conversion_message.h"

namespace zorvane {

/// `call(key, field)` for each option; `Fields` names its fields as the keys of settings.
template <class Fields, class Call>
void ForPdfOptions(Fields& fields, const Call& call) {
    call("lBCLConversionMethod", fields.lBCLConversionMethod);
    call("lBCLDocumentType", fields.lBCLDocumentType);
    call("bBCLMergeParagraph", fields.bBCLMergeParagraph);
    call("bBCLShrinkFonts", fields.bBCLShrinkFonts);
    call("bBCLAdjustFontNames", fields.bBCLAdjustFontNames);
    call("bBCLExtractHyperlinks", fields.bBCLExtractHyperlinks);
    call("bBCLDetectHeader", fields.bBCLDetectHeader);
    call("bRemoveHiddenText", fields.bRemoveHiddenText);
    call("bConnectHyphens", fields.bConnectHyphens);
}

template <class Fields>
void PutPdfOptions(const Fields& fields, ConversionMessage& job) {
    ForPdfOptions(
        fields, [&job](const char* key, std::int32_t value) { job[key] = std::to_string(value); });
}

template <class Fields>
Fields PdfOptionsOf(const ConversionMessage& job) {
    Fields fields;
    ForPdfOptions(fields, [&job](const char* key, auto& field) {
        field = static_cast<std::remove_reference_t<decltype(field)>>(NumberOf(job, key));
    });
    return fields;
}

}  // namespace zorvane
