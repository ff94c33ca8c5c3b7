#include "core/xmltext.h"

#include "core/xmlfile.h"
#include "tests/support/qtprinters.h"

#include <gtest/gtest.h>

namespace {

QString Text_Of(std::initializer_list<uint> codes)
{
    return QString::fromUcs4(codes.begin(), static_cast<int>(codes.size()));
}

struct TCharacterCase
{
    const char* name;
    QString character;
    bool is_legal;
};

const TCharacterCase CHARACTERS[] = {
    {"Null", QString(QChar(0)), false},
    {"Control_1", QString(QChar(0x1)), false},
    {"Backspace", QString(QChar(0x8)), false},
    {"Tab", "\t", true},
    {"Line_feed", "\n", true},
    {"Vertical_tab", "\v", false},
    {"Form_feed", "\f", false},
    {"Carriage_return", "\r", true},
    {"Control_E", QString(QChar(0xE)), false},
    {"Control_1F", QString(QChar(0x1F)), false},
    {"Blank", " ", true},
    {"Delete", QString(QChar(0x7F)), true},
    {"Umlaut", QString(QChar(0xFC)), true},
    {"D7FF", QString(QChar(0xD7FF)), true},
    {"Lone_high_surrogate", QString(QChar(0xD83D)), false},
    {"Lone_low_surrogate", QString(QChar(0xDE00)), false},
    {"Surrogates_in_wrong_order", QString(QChar(0xDE00)) + QChar(0xD83D), false},
    {"E000", QString(QChar(0xE000)), true},
    {"FFFD", QString(QChar(0xFFFD)), true},
    {"FFFE", QString(QChar(0xFFFE)), false},
    {"FFFF", QString(QChar(0xFFFF)), false},
    {"U10000", Text_Of({0x10000}), true},
    {"U1F600", Text_Of({0x1F600}), true},
    {"U10FFFF", Text_Of({0x10FFFF}), true},
};

template <typename TCase>
std::string Case_Name(const testing::TestParamInfo<TCase>& info)
{
    return info.param.name;
}

// The text as it comes back from a file; empty if it is lost.
QString Reread(const QString& text)
{
    TXmlFile writer;
    QByteArray data;
    writer.Reset("Root", 1);
    writer.Write_Text_Node(writer.Root_Element(), text);
    writer.Write_Data(&data, false);

    TXmlFile reader;
    reader.Open_Data(data, "Root", nullptr, true);
    return reader.Read_Text_Node(reader.Root_Element(), true);
}

} // namespace

class Xml_Character_Test : public testing::TestWithParam<TCharacterCase>
{};

TEST_P(Xml_Character_Test, Is_legal_where_xml_can_carry_it)
{
    const QString text = "a" + GetParam().character + "b";

    EXPECT_EQ(Xml_Is_Legal(text), GetParam().is_legal);
    EXPECT_EQ(Xml_Is_Legal(GetParam().character), GetParam().is_legal);
}

TEST_P(Xml_Character_Test, Is_cleaned_away_where_xml_cannot_carry_it)
{
    const QString text = "a" + GetParam().character + "b";

    EXPECT_EQ(Xml_Clean(text), GetParam().is_legal ? text : QString("ab"));
}

TEST_P(Xml_Character_Test, Comes_back_from_a_file_where_it_is_legal)
{
    if (GetParam().is_legal) {
        const QString text = "a" + GetParam().character + "b";
        EXPECT_EQ(Reread(text), text);
    } else {
        EXPECT_THROW(Reread(GetParam().character), TXmlFileException);
    }
}

INSTANTIATE_TEST_SUITE_P(Characters, Xml_Character_Test, testing::ValuesIn(CHARACTERS), Case_Name<TCharacterCase>);

TEST(Xml_Text_Test, The_empty_text_is_legal_clean_and_blank)
{
    EXPECT_TRUE(Xml_Is_Legal(QString()));
    EXPECT_EQ(Xml_Clean(QString()), QString());
    EXPECT_TRUE(Xml_Is_Blank(QString()));
}

TEST(Xml_Text_Test, Is_blank_exactly_where_a_file_loses_the_text)
{
    for (int code = 1; code <= 0xFFFF; ++code) {
        const QString character = QString(QChar(code));
        if (Xml_Is_Legal(character) && (QChar(code).isSpace() || QChar(code).category() == QChar::Other_Format)) {
            EXPECT_EQ(Xml_Is_Blank(character), Reread(character).isEmpty()) << "character " << code;
            EXPECT_EQ(Reread(character + "x"), character + "x") << "character " << code;
        }
    }
}

TEST(Xml_Text_Test, Several_blanks_are_blank)
{
    EXPECT_TRUE(Xml_Is_Blank(" \t" + QString(QChar(QChar::Nbsp)) + "\n"));
    EXPECT_FALSE(Xml_Is_Blank(" a "));
}
