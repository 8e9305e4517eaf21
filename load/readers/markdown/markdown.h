// Markdown to HTML: CommonMark with GitHub's tables, task lists and strikethrough, and footnotes.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zorvane {

/// What a text defines for all its paragraphs: "[label]: address" and "[^label]: note".
struct MarkdownDefinitions {
    std::unordered_map<std::string, std::string> links;
    std::unordered_map<std::string, std::string> notes;
    std::size_t bytes_left = std::size_t{1} << 23;  ///< looked through for ends that are not there
    std::size_t note_bytes_left = std::size_t{1} << 20;  ///< notes may name notes
};

/// The text of a paragraph or heading.
std::string MarkdownInline(std::string_view text, MarkdownDefinitions& definitions, int depth = 0);
/// A label as definitions are looked up by: lower case, white space collapsed.
std::string MarkdownLabel(std::string_view text);
/// With the characters that HTML takes for markup escaped.
void AppendEscaped(std::string_view text, std::string& out);

/// A whole text.
std::string MarkdownToHtml(std::string_view utf8);

}  // namespace zorvane
