#include "tests/monkey/texts.h"

#include <QStringList>

namespace {

const int LONG_NUMBER_DIGITS = 10000;
const int LONGEST_PRINTED = 40;

const QStringList& Names()
{
    static const QStringList NAMES = {
        "A", "B", "C", "a", "Probe", "Scale", "SN 1", "SN 2", "Drift", "Z", "wear", "Wear",
        // Odd ones.
        "", " ", "  x  ", QString(QChar(0xA0)), "%1", "%2", "A - B", "[Default]", "[no selection]", "a|", "x{2}", "a.b",
        "[", "l", "ctem", "L", "Norvexa Data", QString::fromUtf8("\xF0\x9D\x91\xA2"), QString(QChar(0x1)),
        QString("q\u0001r"), "one\ntwo", "tab\tulator", "a & b", "<b>x</b>", "\"quoted\"", "a,b",
        QString::fromUtf8("\u00DF\u00E9\u4E2D"), QString(QChar(0xD835)), QString(200, 'W')};
    return NAMES;
}

const QStringList& Numbers()
{
    static const QStringList NUMBERS = {"0",      "1",      "-1",     "250.5",   "1000",   "0.001",
                                        "8.5",    "50",     "500",    "1e308",   "-0",     "nan",
                                        "inf",    "-inf",   "1e-320", "1,5",     "",       " ",
                                        "12abc",  "-1e308", "1e18",   "0.00001", "1e-300", "99999999999.999999",
                                        "+3",     "0x10",   ".5",     "5.",      "1e",     "1 000",
                                        "\u0663", "1e4000", "1e10",   "20",      "11.5",   "0.123456789"};
    return NUMBERS;
}

const QStringList& Expressions()
{
    static const QStringList EXPRESSIONS = {"0.003",    "Sr/2",   "L*CTEc*Td",   "SQRT(2)*Sdev", "SUMSQ(1,2,3)",
                                            "wear",     "Wear*2", "a",           "CTEd*Tr*Lc",   "(",
                                            ")",        "SQRT((", "1/0",         "-(-(1))",      "x{2}",
                                            "a|",       "%1",     "1e308*1e308", "\u221A2",      "((((((((1))))))))",
                                            "a & b < c"};
    return EXPRESSIONS;
}

QString Character(QChar character)
{
    const ushort code = character.unicode();

    return code >= 0x20 && code < 0x7F ? QString(character) : QStringLiteral("\\u%1").arg(code, 4, 16, QChar('0'));
}

} // namespace

QString Random_Name(TRandom* random)
{
    return random->Pick(Names());
}

QString Random_Number(TRandom* random)
{
    return random->Chance(1) ? QString(LONG_NUMBER_DIGITS, '7') : random->Pick(Numbers());
}

QString Random_Expression(TRandom* random)
{
    return random->Chance(1) ? QString(LONG_NUMBER_DIGITS, '(') : random->Pick(Expressions());
}

QString Random_Text(TRandom* random)
{
    switch (random->Below(3)) {
    case 0:
        return Random_Number(random);
    case 1:
        return Random_Expression(random);
    default:
        return Random_Name(random);
    }
}

QString Printable(const QString& text)
{
    QString printable;
    for (const QChar character : text.left(LONGEST_PRINTED)) {
        printable += Character(character);
    }
    return text.size() > LONGEST_PRINTED ? QStringLiteral("%1... (%2)").arg(printable).arg(text.size()) : printable;
}
