#include "load/readers/opendocument/ods_workbook.h"

#include <algorithm>
#include <new>
#include <unordered_set>

#include "load/readers/container/part_pieces.h"
#include "load/readers/container/xml_part.h"
#include "load/readers/container/xml_scanner.h"
#include "load/readers/opendocument/open_blanks.h"
#include "load/readers/opendocument/open_formula.h"
#include "load/readers/sheets/array_formulas.h"
#include "load/readers/sheets/row_builder.h"

namespace zorvane {
namespace {

using Token = XmlScanner::Token;

constexpr std::size_t kMostTables = 10'000;
constexpr std::int32_t kRowsBetweenProgress = 2048;

// Collects the shown text of one cell: its paragraphs as lines.
class CellText {
  public:
    void Clear() {
        text_.clear();
        paragraphs_ = 0;
    }
    void BeginParagraph() {
        if (paragraphs_++ > 0)
            text_ += '\n';
        blanks_.BeginParagraph();
    }
    void Add(std::string_view text) { blanks_.Append(text, text_); }
    void AddExact(std::size_t count, char character) {
        text_.append(count, character);
        blanks_.Exact();
    }
    std::string_view View() const { return text_; }

  private:
    std::string text_;
    std::int32_t paragraphs_ = 0;
    OpenBlanks blanks_;
};

class OdsSheetReader {
  public:
    OdsSheetReader(PartStream& part, const SheetOptions& options, const RowSink& rows,
                   ReadMonitor& monitor)
        : scanner_(part), options_(options), builder_(rows), monitor_(monitor) {}

    // From the sheet's own tag to its end.
    ReadEnd Run() {
        const auto take = [&](Token token) {
            if (token == Token::Start)
                return Start() && (!scanner_.SelfClosing() || Close());
            if (token == Token::End)
                return Close();
            TakeText();
            return true;
        };
        return scanner_.ForTokens(take, [&] { return End(); });
    }

  private:
    ReadEnd End() const { return stopped_ ? ReadEnd::Fault(ReadError::Cancelled) : builder_.End(); }

    static std::int32_t Repeated(std::string_view text) { return std::max(NumberOf(text, 1), 1); }

    void TakeText() {
        if (!in_paragraph_ || skipped_ > 0)
            return;
        decoded_.clear();
        scanner_.AppendText(decoded_);
        cell_.Add(decoded_);
    }

    bool Start() {
        const std::string_view name = scanner_.Name();
        if (skipped_ > 0) {
            ++skipped_;
            return true;
        }
        if (in_paragraph_) {
            InParagraph(name);
        } else if (in_cell_) {
            if (name == "p") {
                cell_.BeginParagraph();
                in_paragraph_ = true;
                depth_ = 1;
            } else {
                skipped_ = 1;  // notes, drawings
            }
        } else if (name == "table-row") {
            return BeginRow();
        } else if (name == "table-cell" || name == "covered-table-cell") {
            BeginCell(name[0] == 'c');
        } else if (name == "table") {
            tables_++;
            skipped_ = tables_ > 1 ? 1 : 0;
        } else if (name == "shapes" || name == "forms" || name == "table-source") {
            skipped_ = 1;
        }
        return true;
    }

    void InParagraph(std::string_view name) {
        ++depth_;
        if (name == "s")
            cell_.AddExact(OpenBlankCount(scanner_.Attribute("c")), ' ');
        else if (name == "tab")
            cell_.AddExact(1, '\t');
        else if (name == "line-break")
            cell_.AddExact(1, '\n');
        else if (name == "annotation" || name == "ruby-text" || name == "frame" || name == "note") {
            --depth_;
            skipped_ = 1;
        }
    }

    // An element ends. False when the sheet does.
    bool Close() {
        if (skipped_ > 0) {
            --skipped_;
            return true;
        }
        if (in_paragraph_) {
            in_paragraph_ = --depth_ > 0;
            return true;
        }
        const std::string_view name = scanner_.Name();
        if (name == "table-cell" || name == "covered-table-cell")
            EndCell();
        else if (name == "table-row")
            return EndRow();
        return name != "table";
    }

    bool BeginRow() {
        column_ = 0;
        row_repeated_ = Repeated(scanner_.Attribute("number-rows-repeated"));
        builder_.BeginRow(row_);
        if (++rows_seen_ % kRowsBetweenProgress == 0)
            stopped_ = !monitor_.Progress(row_, std::max(row_, 1));
        return !stopped_;
    }

    bool EndRow() {
        const bool goes_on = builder_.EndRow(row_repeated_);
        row_ = std::min(row_ + std::min(row_repeated_, kMaxSheetRows), kMaxSheetRows);
        return goes_on;
    }

    void BeginCell(bool covered) {
        in_cell_ = true;
        covered_ = covered;
        cell_.Clear();
        formula_.clear();
        cell_repeated_ = Repeated(scanner_.Attribute("number-columns-repeated"));
        if (!options_.formulas)
            return;
        ReadFormula();
    }

    void ReadFormula() {
        if (const std::string* const array = arrays_.At(row_, column_))
            formula_ = *array;
        decoded_.clear();
        AppendDecoded(scanner_.Attribute("formula"), decoded_);
        if (decoded_.empty())
            return;
        const std::string_view columns = scanner_.Attribute("number-matrix-columns-spanned");
        formula_ = columns.empty() ? "" : "{";
        AppendOpenFormula(decoded_, formula_);
        if (columns.empty())
            return;
        formula_ += "}";
        const std::int32_t rows = Repeated(scanner_.Attribute("number-matrix-rows-spanned"));
        CellRange range{{row_, column_}, {row_, column_}};
        range.last.row += std::min(rows, kMaxSheetRows) - 1;
        range.last.column += std::min(Repeated(columns), kMaxSheetColumns) - 1;
        arrays_.Add(range, formula_);
    }

    void EndCell() {
        in_cell_ = false;
        const std::int32_t repeated = std::min(cell_repeated_, kMaxSheetColumns);
        const std::int32_t end = std::min(column_ + repeated, kMaxSheetColumns);
        if (!covered_ && (!formula_.empty() || !cell_.View().empty())) {
            for (std::int32_t column = column_; column < end; ++column)
                AppendCell(column);
        }
        column_ = end;
    }

    void AppendCell(std::int32_t column) {
        std::string& out = builder_.Text();
        if (formula_.empty()) {
            out += cell_.View();
        } else {
            out += formula_;
            if (options_.values_too && !cell_.View().empty()) {
                out += ' ';
                out += cell_.View();
            }
        }
        builder_.EndCell(column);
    }

    XmlScanner scanner_;
    const SheetOptions& options_;
    RowBuilder builder_;
    ReadMonitor& monitor_;
    std::int32_t tables_ = 0;
    std::int64_t skipped_ = 0;  // depth inside of what does not belong to a cell's text
    std::int64_t depth_ = 0;    // inside of a paragraph
    bool in_cell_ = false;
    bool in_paragraph_ = false;
    bool covered_ = false;
    bool stopped_ = false;
    std::int32_t row_ = 0;
    std::int32_t column_ = 0;
    std::int32_t rows_seen_ = 0;
    std::int32_t row_repeated_ = 1;
    std::int32_t cell_repeated_ = 1;
    CellText cell_;
    std::string formula_;
    ArrayFormulas arrays_;
    std::string decoded_;
};

class OdsWorkbook : public Workbook {
  public:
    explicit OdsWorkbook(PartPieces content) : content_(std::move(content)) {}

    ReadEnd Open() {
        PiecesStream stream(content_, 0);
        XmlScanner scanner(stream);
        ReadEnd end = scanner.ForAllTokens([&](Token token) {
            if (token == Token::Start)
                TakeStart(scanner);
            else if (token == Token::End && scanner.Name() == "table")
                --tables_;
        });
        if (end.ok() && sheets_.empty())
            return ReadEnd::Fault(ReadError::Damaged, "the workbook has no sheets");
        return end;
    }

    const std::vector<SheetInfo>& Sheets() const override { return sheets_; }

    ReadEnd ReadSheet(std::size_t index, const SheetOptions& options, const RowSink& rows,
                      ReadMonitor& monitor) override try {
        if (index >= offsets_.size())
            return ReadEnd::Fault(ReadError::WrongFormat, "no such sheet");
        PiecesStream stream(content_, offsets_[index]);
        return OdsSheetReader(stream, options, rows, monitor).Run();
    } catch (const std::bad_alloc&) {
        return ReadEnd::Fault(ReadError::TooLarge, "the workbook needs more memory than allowed");
    }

  private:
    void TakeStart(const XmlScanner& scanner) {
        const std::string_view name = scanner.Name();
        if (name == "style") {
            style_ = scanner.Attribute("name");
        } else if (name == "table-properties") {
            if (scanner.Attribute("display") == "false")
                hidden_styles_.insert(style_);
        } else if (name == "table") {
            if (tables_ == 0)  // others stand inside of cells
                AddSheet(scanner);
            tables_ += scanner.SelfClosing() ? 0 : 1;
        }
    }

    void AddSheet(const XmlScanner& scanner) {
        if (sheets_.size() >= kMostTables)
            return;
        SheetInfo sheet;
        AppendDecoded(scanner.Attribute("name"), sheet.name);
        sheet.hidden = hidden_styles_.contains(std::string(scanner.Attribute("style-name")));
        sheets_.push_back(std::move(sheet));
        offsets_.push_back(static_cast<std::size_t>(scanner.Offset()));
    }

    PartPieces content_;
    std::string style_;
    std::unordered_set<std::string> hidden_styles_;
    int tables_ = 0;  // open ones
    std::vector<SheetInfo> sheets_;
    std::vector<std::size_t> offsets_;
};

std::unique_ptr<Workbook> OpenContent(PartStream& stream, ReadEnd& end) {
    PartPieces content;
    end = content.Fill(stream);
    if (!end.ok())
        return nullptr;
    auto workbook = std::make_unique<OdsWorkbook>(std::move(content));
    end = workbook->Open();
    if (!end.ok())
        return nullptr;
    return workbook;
}

}  // namespace

bool IsOpenDocumentSheets(Package& package) {
    const auto type = package.Read("mimetype");
    return (type && type->find("opendocument.spreadsheet") != std::string::npos) ||
           (!package.Has("[Content_Types].xml") && package.Has("content.xml"));
}

std::unique_ptr<Workbook> OpenOds(Package& package, ReadEnd& end) {
    const std::unique_ptr<PartStream> content = package.Stream("content.xml");
    if (content == nullptr) {
        end = ReadEnd::Fault(ReadError::WrongFormat, "no sheets inside");
        return nullptr;
    }
    return OpenContent(*content, end);
}

std::unique_ptr<Workbook> OpenFlatOds(std::string_view content, ReadEnd& end) {
    MemoryStream stream(content);
    return OpenContent(stream, end);
}

}  // namespace zorvane
