#include "load/readers/sheets/number_format_parts.h"

namespace zorvane::number_format {
namespace {

// Names parted by blanks: months and days from January and Sunday on, each in full and in short.
struct Row {
    std::uint32_t language;  // the lower ten bits of a locale's number
    std::string_view months;
    std::string_view short_months;
    std::string_view days;
    std::string_view short_days;
};

constexpr Row kRows[] = {
    {0x09, "January February March April May June July August September October November December",
     "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec",
     "Sunday Monday Tuesday Wednesday Thursday Friday Saturday", "Sun Mon Tue Wed Thu Fri Sat"},
    {0x07, "Januar Februar März April Mai Juni Juli August September Oktober November Dezember",
     "Jan Feb Mrz Apr Mai Jun Jul Aug Sep Okt Nov Dez",
     "Sonntag Montag Dienstag Mittwoch Donnerstag Freitag Samstag", "So Mo Di Mi Do Fr Sa"},
    {0x0C,
     "janvier février mars avril mai juin juillet août septembre octobre novembre "
     "décembre",
     "janv. févr. mars avr. mai juin juil. août sept. oct. nov. déc.",
     "dimanche lundi mardi mercredi jeudi vendredi samedi", "dim. lun. mar. mer. jeu. ven. sam."},
    {0x0A,
     "enero febrero marzo abril mayo junio julio agosto septiembre octubre noviembre diciembre",
     "ene feb mar abr may jun jul ago sep oct nov dic",
     "domingo lunes martes miércoles jueves viernes sábado", "dom lun mar mié jue vie sáb"},
    {0x10,
     "gennaio febbraio marzo aprile maggio giugno luglio agosto settembre ottobre novembre "
     "dicembre",
     "gen feb mar apr mag giu lug ago set ott nov dic",
     "domenica lunedì martedì mercoledì giovedì venerdì sabato", "dom lun mar mer gio ven sab"},
    {0x13,
     "januari februari maart april mei juni juli augustus september oktober november december",
     "jan feb mrt apr mei jun jul aug sep okt nov dec",
     "zondag maandag dinsdag woensdag donderdag vrijdag zaterdag", "zo ma di wo do vr za"},
    {0x16,
     "janeiro fevereiro março abril maio junho julho agosto setembro outubro novembro dezembro",
     "jan fev mar abr mai jun jul ago set out nov dez",
     "domingo segunda-feira terça-feira quarta-feira quinta-feira sexta-feira sábado",
     "dom seg ter qua qui sex sáb"},
};

std::string_view NameAt(std::string_view names, std::size_t index) {
    for (; index > 0; --index)
        names.remove_prefix(names.find(' ') + 1);
    return names.substr(0, names.find(' '));
}

const Row& RowOf(std::uint32_t locale) {
    for (const Row& row : kRows) {
        if (row.language == (locale & 0x3FF))
            return row;
    }
    return kRows[0];
}

}  // namespace

std::string_view MonthName(std::uint32_t locale, std::size_t month, bool in_short) {
    const Row& row = RowOf(locale);
    return NameAt(in_short ? row.short_months : row.months, month);
}

std::string_view DayName(std::uint32_t locale, std::size_t day, bool in_short) {
    const Row& row = RowOf(locale);
    return NameAt(in_short ? row.short_days : row.days, day);
}

}  // namespace zorvane::number_format
