// What lies beside the text in packages of every kind: digests of parts, properties of documents.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "load/readers/container/package.h"
#include "load/readers/container/xml_part.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

/// Digests of a package's parts, each read once.
class PartDigests {
  public:
    /// Of each part at most so many bytes are read, of all together three times that.
    explicit PartDigests(Package& package, std::size_t most_of_part = kMaxPartBytes)
        : package_(package), most_of_part_(most_of_part), left_(3 * most_of_part) {}
    /// Of a part that is missing, that of its name. What is not read counts by the checksum that
    /// the package tells.
    const std::string& Of(const std::string& part);
    /// Of the words of an XML part, so that a file that was only saved again has the same.
    std::string OfText(const std::string& part);
    Package& Parts() { return package_; }

  private:
    Package& package_;
    std::size_t most_of_part_;
    std::size_t left_;
    std::unordered_map<std::string, std::string> digests_;
};

/// The file's own name in "media/image1.png".
std::string_view FileOfPart(std::string_view part);
/// The text inside an element, its paragraphs apart by a blank; bounded.
std::string TextInside(const pugi::xml_node& node);
/// The words of a chart: its titles, names and values.
std::string ChartText(const pugi::xml_node& root);

/// Title, author, ... of an Office Open XML package, and the properties that its users made.
void ReportOfficeProperties(Package& package, DocumentSink& sink);
/// Those of an OpenDocument package.
void ReportOpenDocumentProperties(Package& package, DocumentSink& sink);
/// What the package knows to be damaged, when all else is read.
void ReportDamage(const Package& package, DocumentSink& sink);
/// The children of an element of Dublin Core (`title`, `creator`, `subject`, ...), as in EPUB.
void ReportDublinCore(const pugi::xml_node& parent, DocumentSink& sink);

}  // namespace zorvane
