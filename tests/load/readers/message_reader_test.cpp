#include <string>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "load/readers/word_readers.h"
#include "tests/support/shown_document.h"
#include "tests/support/text_rows.h"

namespace zorvane::message_reader_test {
namespace {

std::string ShownMessage(std::string_view bytes) {
    return Shown([bytes](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadMessage(bytes, "windows-1252", sink, monitor);
    });
}

void Check(std::initializer_list<TextRow> rows) {
    CheckRows(ShownMessage, rows);
}

TEST(MessageReader, ShowsTheFieldsThatMatter) {
    Check({
        {"in their order",
         "Subject: s\r\nReceived: x\r\nDate: d\r\nFROM: f <a@b>\r\nCc: c\r\nTo: t,\r\n "
         "u\r\n\r\nbody\r\n",
         "[b:From: ]f <a@b>|[b:To: ]t, u|[b:Cc: ]c|[b:Date: ]d|[b:Subject: ]s||body|"},
        {"encoded words",
         "Subject: =?utf-8?B?w6nD?= =?UTF-8?b?qQ==?= a =?iso-8859-1?Q?b_=E9?= =?x\r\n\r\n",
         "[b:Subject: ]\u00E9\u00E9 a b \u00E9 =?x||"},
        {"raw bytes", "Subject: caf\xE9\r\n\r\n", "[b:Subject: ]caf\u00E9||"},
        {"a mailbox's line in front", "From me Mon\nSubject: s\n\nb", "[b:Subject: ]s||b|"},
    });
    EXPECT_EQ(ShownMessage("no message\n\nat all").substr(0, 8), "error 2:");
}

TEST(MessageReader, DecodesBodies) {
    Check({
        {"quoted-printable",
         "Content-Type: text/plain; charset=\"iso-8859-1\"\nContent-Transfer-Encoding: "
         "Quoted-Printable\n\na=E9=\nb =3D =zz\n",
         "|a\u00E9b = =zz|"},
        {"base64",
         "Content-Type: text/plain; charset=utf-8\nContent-Transfer-Encoding: base64\n\n"
         "w6kK\nYg==\n",
         "|\u00E9|b|"},
        {"a page", "Content-Type: text/html; charset=windows-1251\n\n<p>\xC0 <b>b</b></p>",
         "|\u0410 [b:b|]"},
        {"flowed lines", "Content-Type: text/plain; format=flowed\n\na \nb\n-- \nc\n",
         "|a b|-- |c|"},
    });
}

// As an editor saves it: in another encoding than the message says of itself.
std::string Saved(std::u16string_view text, bool big_endian) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += big_endian ? high : low;
        bytes += big_endian ? low : high;
    }
    return bytes;
}

TEST(MessageReader, ReadsWhatAProgramSavedInAnotherEncoding) {
    const std::u16string text =
        u"From: a\r\nSubject: \u00E9\r\nContent-Type: text/plain; charset=iso-8859-1\r\n\r\nb "
        u"\u20AC\r\n";
    const std::string shown = "[b:From: ]a|[b:Subject: ]\u00E9||b \u20AC|";
    EXPECT_EQ(ShownMessage(Saved(u"\uFEFF" + text, false)), shown);
    EXPECT_EQ(ShownMessage(Saved(u"\uFEFF" + text, true)), shown);
    EXPECT_EQ(ShownMessage(Saved(text, false)), shown);
    EXPECT_EQ(ShownMessage(Saved(text, true) + '\n'), shown) << "half a character at the end";
    EXPECT_EQ(ShownMessage("\xEF\xBB\xBF\r\n" + ToUtf8(text)), shown);
    const std::string encoded =
        "\xEF\xBB\xBF"
        "Content-Type: text/plain; charset=windows-1251\nContent-Transfer-Encoding: "
        "quoted-printable\n\n=C0=E1";
    EXPECT_EQ(ShownMessage(encoded), "|\u0410\u0431|") << "encoded bytes keep their own charset";
    const std::string page =
        "\xEF\xBB\xBF"
        "Content-Type: text/html\n\n<meta charset=iso-8859-1><p>\u00E9";
    EXPECT_EQ(ShownMessage(page), "|\u00E9|");
    EXPECT_EQ(ShownMessage(std::string("Subject: a\0b\n\nc\0d\n", 18)), "[b:Subject: ]ab||cd|");
}

TEST(MessageReader, ShowsThePartsOfAMessage) {
    Check({
        {"the better of two forms",
         "Content-Type: multipart/alternative; boundary=x\n\npreamble\n--x\n\nplain\n--x\n"
         "Content-Type: text/html\n\n<i>page</i>\n--x--\nepilogue",
         "|[i:page|]"},
        {"attachments by name",
         "Content-Type: multipart/mixed;\n boundary=\"a b\"\n\n--a b\n\ntext\n--a b\n"
         "Content-Type: application/pdf; name=\"r.pdf\"\n\nJVBE\n--a b\n"
         "Content-Disposition: attachment; filename*0*=utf-8''%C3%A9; "
         "filename*1=\".txt\"\n\nsecret\n"
         "--a b\nContent-Type: image/png\n\nx\n--a b--\n",
         "|text|[b:Attachment: ]r.pdf|[b:Attachment: ]\u00E9.txt|[b:Attachment: ]image/png|"},
        {"a page with its pictures",
         "Content-Type: multipart/related; boundary=x\n\n--x\nContent-Type: multipart/alternative; "
         "boundary=y\n\n--y\n\np\n--y\nContent-Type: text/html\n\n<p>h\n--y--\n--x\nContent-Type: "
         "image/png; name=i.png\nContent-ID: <1>\n\nx\n--x--",
         "|h|"},
        {"a message in a message",
         "Subject: a\nContent-Type: multipart/mixed; boundary=x\n\n--x\nContent-Type: "
         "message/rfc822\n\nSubject: b\n\ninner\n--x--",
         "[b:Subject: ]a||[b:Subject: ]b||inner|"},
        {"cut off", "Content-Type: multipart/mixed; boundary=x\n\n--x\n\ntext", "|text|"},
        {"no boundary", "Content-Type: multipart/mixed\n\ntext", "|text|"},
        {"another boundary", "Content-Type: multipart/mixed; boundary=x\n\n--y\n\ntext\n",
         "|--y||text|"},
        {"parts that are empty", "Content-Type: multipart/mixed; boundary=x\n\n--x\n--x--\n", "|"},
    });
}

TEST(MessageReader, EndsSoonOnHostileMessages) {
    std::string nested;
    for (int i = 0; i < 1000; ++i)
        nested += "Content-Type: multipart/mixed; boundary=" + std::to_string(i) + "\n\n--" +
                  std::to_string(i) + "\n";
    EXPECT_EQ(ShownMessage(nested), "error 3: parts are nested too deeply");
    std::string words = "Subject: ";
    for (int i = 0; i < 100'000; ++i)
        words += "=?a?q?";
    EXPECT_NE(ShownMessage(words + "\n\nb").find("|b|"), std::string::npos);
    std::string parts = "Content-Type: multipart/mixed; boundary=x\n\n";
    for (int i = 0; i < 100'000; ++i)
        parts += "--x\n";
    EXPECT_EQ(ShownMessage(parts).find("error"), std::string::npos);
}

}  // namespace
}  // namespace zorvane::message_reader_test
