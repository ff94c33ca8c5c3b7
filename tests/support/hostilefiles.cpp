#include "tests/support/hostilefiles.h"

#include <QRegularExpression>
#include <QStringList>
#include <QTextCodec>
#include <QtEndian>

#include <algorithm>
#include <functional>

namespace {

constexpr int MEGABYTE = 1024 * 1024;

const char DECLARATION[] = R"(<?xml version="1.0" encoding="utf-8"?>)";
const char ROOT[] = R"(<Norvexa_Data File_Version="3" File_Revision="Mar 05 2021">)";
const char COMPONENT_NAME[] = "<Name>Probe</Name>";

using TFiles = std::vector<THostileFile>;

// Parts of a budget

QString Budget()
{
    return QString::fromUtf8(Small_Budget());
}

QByteArray Replaced(const QString& part, const QString& replacement)
{
    return Budget().replace(Budget().indexOf(part), part.size(), replacement).toUtf8();
}

QByteArray With_Name(const QString& name)
{
    return Replaced(COMPONENT_NAME, "<Name>" + name + "</Name>");
}

QByteArray With_Declaration(const QString& declaration)
{
    return Replaced(DECLARATION, declaration);
}

QByteArray With_Root(const QString& root)
{
    return Replaced(ROOT, root);
}

QByteArray With_Root_Attributes(const QString& attributes)
{
    return With_Root(R"(<Norvexa_Data File_Version="3" )" + attributes + ">");
}

/// In front of the name of the first component.
QByteArray With_Content(const QString& content)
{
    return Replaced(COMPONENT_NAME, content + COMPONENT_NAME);
}

QByteArray With_Subset(const QString& subset, const QString& name)
{
    QString text = Budget();

    text.replace(text.indexOf(ROOT), 0, "<!DOCTYPE Norvexa_Data [" + subset + "]>");
    return text
        .replace(text.indexOf(COMPONENT_NAME), static_cast<int>(sizeof(COMPONENT_NAME)) - 1,
                 "<Name>" + name + "</Name>")
        .toUtf8();
}

/// `part` with "%" replaced by 0, 1, 2, ...
QString Numbered(const QString& part, int count)
{
    QString text;

    for (int number = 0; number < count; ++number) {
        text += QString(part).replace('%', QString::number(number));
    }
    return text;
}

QString Times(int count, const QString& part)
{
    return part.repeated(count);
}

QByteArray Encoded(const QString& text, const char* codec)
{
    return QTextCodec::codecForName(codec)->fromUnicode(text);
}

template <typename TMake>
void Add(TFiles* files, const QString& name, TOpening expected, TMake make)
{
    files->push_back({name, expected, make});
}

// Entities

QString Bomb(int levels, const QString& reference)
{
    QString subset = R"(<!ENTITY e0 "0123456789">)";

    for (int level = 1; level < levels; ++level) {
        subset += QString(R"(<!ENTITY e%1 "%2">)").arg(QString::number(level), Times(10, reference.arg(level - 1)));
    }
    return subset;
}

void Add_Entity_Bombs(TFiles* files)
{
    for (int levels = 2; levels <= 12; ++levels) {
        const auto last = [=] { return QString("&e%1;").arg(levels - 1); };
        const TOpening expected = levels < 7 ? TOpening::Either : TOpening::Refused;

        Add(files, QString("Bomb_of_%1_levels").arg(levels), expected,
            [=] { return With_Subset(Bomb(levels, "&e%1;"), last()); });
        Add(files, QString("Bomb_of_%1_levels_in_an_attribute").arg(levels), expected, [=] {
            return With_Subset(Bomb(levels, "&e%1;"), QString("Probe</Name><X a=\"%1\"/><Name>x").arg(last()));
        });
    }
    for (const int size : {1000, 20'000, 200'000}) {
        Add(files, QString("Entity_of_%1_characters_many_times").arg(size), TOpening::Refused,
            [=] { return With_Subset(QString(R"(<!ENTITY e "%1">)").arg(QString(size, 'x')), Times(20'000, "&e;")); });
    }
    Add(files, "Parameter_bomb", TOpening::Either,
        [] { return With_Subset(Numbered(R"(<!ENTITY % p% "x">)", 30) + Times(20'000, "%p1;"), "Probe"); });
    Add(files, "Bomb_of_declared_attributes", TOpening::Either, [] {
        return With_Subset(QString(R"(<!ENTITY % p "%1">)").arg(Numbered("<!ATTLIST Name a% CDATA 'x'>", 3000)) +
                               Times(100, "%p;"),
                           "Probe");
    });
}

void Add_Entities(TFiles* files)
{
    const auto refused = [=](const char* name, const QString& subset, const QString& text) {
        Add(files, name, TOpening::Refused, [=] { return With_Subset(subset, text); });
    };

    refused("Entity_of_itself", R"(<!ENTITY a "&a;">)", "&a;");
    refused("Entities_of_each_other", R"(<!ENTITY a "&b;"><!ENTITY b "&a;">)", "&a;");
    refused("Parameter_of_itself", R"(<!ENTITY % a "%a;">%a;)", "&a;");
    refused("Unknown_entity", "", "&unknown;");
    refused("Half_an_element_in_an_entity", R"(<!ENTITY a "<X>">)", "&a;");
    refused("Entity_without_end", "", "&amp");
    refused("Ampersand", "", "R&D");
    for (const int count : {65, 1000, 100'000}) {
        refused(qUtf8Printable(QString("Entities_%1").arg(count)), Numbered(R"(<!ENTITY e% "x">)", count), "Probe");
    }
    Add(files, "Entities_64", TOpening::Loads,
        [] { return With_Subset(Numbered(R"(<!ENTITY e% "x">)", 64), "a&e63;"); });
}

void Add_External_Entities(TFiles* files)
{
    const QStringList places = {"file:///etc/hostname", "budget.norvexa",      "/dev/zero",    "/dev/random",
                                "/dev/stdin",           "http://127.0.0.1:9/", "../../secret", "/proc/self/mem"};

    for (int place = 0; place < places.size(); ++place) {
        const QString system = QString("SYSTEM \"%1\"").arg(places.at(place));

        Add(files, QString("External_entity_%1").arg(place), TOpening::Either,
            [=] { return With_Subset(QString("<!ENTITY a %1>").arg(system), "Probe&a;"); });
        Add(files, QString("External_parameter_%1").arg(place), TOpening::Either,
            [=] { return With_Subset(QString("<!ENTITY % a %1>%a;").arg(system), "Probe"); });
        Add(files, QString("External_document_type_%1").arg(place), TOpening::Either,
            [=] { return Replaced(ROOT, QString("<!DOCTYPE Norvexa_Data %1>").arg(system) + ROOT); });
    }
}

// Nesting

void Add_Nesting(TFiles* files)
{
    for (const int depth : {240, 254, 257, 1000, 25'000, 100'000, 1'000'000}) {
        const TOpening expected = depth < 254 ? TOpening::Loads : (depth > 256 ? TOpening::Refused : TOpening::Either);

        Add(files, QString("Elements_nested_%1_deep").arg(depth), expected,
            [=] { return With_Content(Times(depth, "<a>") + Times(depth, "</a>")); });
        Add(files, QString("Elements_never_closed_%1_deep").arg(depth), TOpening::Refused,
            [=] { return QByteArray(DECLARATION) + ROOT + Times(depth, "<Components>").toUtf8(); });
    }
    Add(files, "Roots_100000_deep", TOpening::Refused, [] { return QByteArray(ROOT).repeated(100'000); });
    Add(files, "Namespaces_100000_deep", TOpening::Refused,
        [] { return With_Content(Numbered(R"(<n%:a xmlns:n%="u%">)", 100'000)); });
    Add(files, "Namespaces_250_deep", TOpening::Refused,
        [] { return With_Content(Numbered(R"(<n%:a xmlns:n%="u%">)", 250)); });
    Add(files, "Only_closing_tags", TOpening::Refused, [] { return With_Content(Times(100'000, "</a>")); });
    Add(files, "Only_opening_signs", TOpening::Refused, [] { return QByteArray(MEGABYTE, '<'); });
    Add(files, "Parentheses_100000_deep", TOpening::Refused,
        [] { return With_Subset("<!ELEMENT a " + Times(100'000, "(") + "b" + Times(100'000, ")") + ">", "Probe"); });
    Add(files, "Component_in_component_100000_times", TOpening::Refused, [] {
        return QByteArray(DECLARATION) + ROOT +
               QByteArray("<Components><Component><Identifiers><Identifier>").repeated(100'000);
    });
}

// Characters

void Add_High_Characters(TFiles* files)
{
    const struct
    {
        const char* name;
        const char* text;
        TOpening expected;
    } ROWS[] = {
        {"Mathematical_letter", "\xF0\x9D\x91\xA2", TOpening::Loads},
        {"First_beyond_the_plane", "\xF0\x90\x80\x80", TOpening::Loads},
        {"Last_of_all", "a\xF4\x8F\xBF\xBD", TOpening::Loads},
        {"Mathematical_letter_as_reference", "&#x1D462;", TOpening::Loads},
        {"Mathematical_letter_as_decimal_reference", "&#119906;", TOpening::Loads},
        {"Last_of_all_as_reference", "&#x10FFFD;", TOpening::Loads},
        {"Beyond_unicode", "&#x110000;", TOpening::Refused},
        {"Far_beyond_unicode", "&#x10000000000000041;", TOpening::Refused},
        {"Low_bits_of_a_letter", "&#x100000041;", TOpening::Refused},
        {"Lone_high_surrogate", "&#xD800;", TOpening::Refused},
        {"Lone_low_surrogate", "&#xDC00;", TOpening::Refused},
        {"Pair_of_surrogates_as_references", "&#xD835;&#xDC62;", TOpening::Refused},
        {"Surrogates_in_bytes", "\xED\xA0\xB5\xED\xB1\xA2", TOpening::Refused},
        {"Non_character_FFFE", "\xEF\xBF\xBE", TOpening::Refused},
        {"Non_character_FFFF", "\xEF\xBF\xBF", TOpening::Refused},
        {"Non_character_FFFF_as_reference", "&#xFFFF;", TOpening::Refused},
        {"Beyond_the_highest_byte", "\xF4\x90\x80\x80", TOpening::Refused},
        {"Overlong_zero", "\xC0\x80", TOpening::Refused},
        {"Overlong_slash", "\xE0\x80\xAF", TOpening::Refused},
        {"Five_bytes", "\xF8\x88\x80\x80\x80", TOpening::Refused},
        {"Lone_following_byte", "\x80", TOpening::Refused},
        {"Half_a_character", "\xF0\x9D\x91", TOpening::Refused},
        {"Byte_FE", "\xFE", TOpening::Refused},
        {"Byte_order_mark_within", "a\xEF\xBB\xBF", TOpening::Loads},
        {"No_break_space", "\xC2\xA0", TOpening::Refused},
        {"No_break_space_beside_a_letter", "\xC2\xA0x", TOpening::Loads},
        {"Many_combining_marks", "a\xCC\x81\xCC\x81\xCC\x81\xCC\x81", TOpening::Loads},
        {"Right_to_left_override", "\xE2\x80\xAE txt", TOpening::Loads},
    };

    for (const auto& [name, text, expected] : ROWS) {
        const QByteArray bytes = text;
        Add(files, name, expected, [=] { return Small_Budget().replace("<Name>Probe<", "<Name>" + bytes + "<"); });
    }
}

void Add_Control_Characters(TFiles* files)
{
    for (int code = 0; code < 0x20; ++code) {
        const bool is_legal = code == '\t' || code == '\n' || code == '\r';
        const TOpening expected = is_legal ? TOpening::Loads : TOpening::Refused;
        const QString number = QString::number(code, 16);

        Add(files, "Control_character_" + number, expected,
            [=] { return With_Name("a" + QString(QChar(code)) + "b"); });
        Add(files, "Control_character_as_reference_" + number, expected,
            [=] { return With_Name("a&#x" + number + ";b"); });
    }
    for (const int code : {0x7F, 0x80, 0x85, 0x9F}) {
        Add(files, "Control_character_" + QString::number(code, 16), TOpening::Loads,
            [=] { return With_Name("a" + QString(QChar(code)) + "b"); });
    }
}

// Encodings

QString Declared(const QString& encoding)
{
    return QString(With_Declaration(QString(R"(<?xml version="1.0" encoding="%1"?>)").arg(encoding)))
        .replace("<Name>Probe<", QString::fromUtf8("<Name>Prüfling<"));
}

void Add_Encodings(TFiles* files)
{
    const struct
    {
        const char* declared;
        const char* used;
        TOpening expected;
    } ROWS[] = {
        {"utf-8", "UTF-8", TOpening::Loads},
        {"UTF-16", "UTF-16", TOpening::Loads},
        {"UTF-16LE", "UTF-16LE", TOpening::Either},
        {"UTF-16BE", "UTF-16BE", TOpening::Either},
        {"UTF-32", "UTF-32", TOpening::Loads},
        {"UTF-32LE", "UTF-32LE", TOpening::Either},
        {"UTF-32BE", "UTF-32BE", TOpening::Either},
        {"utf-8", "UTF-16", TOpening::Loads},
        {"utf-8", "UTF-32", TOpening::Loads},
        {"UTF-16", "UTF-8", TOpening::Refused},
        {"UTF-32", "UTF-8", TOpening::Refused},
        {"ISO-8859-1", "ISO-8859-1", TOpening::Loads},
        {"ISO-8859-15", "ISO-8859-15", TOpening::Loads},
        {"windows-1252", "windows-1252", TOpening::Loads},
        {"utf-8", "ISO-8859-1", TOpening::Refused},
        {"ISO-8859-1", "UTF-8", TOpening::Loads},
        {"KOI8-R", "UTF-8", TOpening::Either},
        {"Shift_JIS", "UTF-8", TOpening::Either},
        {"GB18030", "GB18030", TOpening::Either},
        {"EUC-JP", "ISO-8859-1", TOpening::Either},
        {"US-ASCII", "UTF-8", TOpening::Either},
        {"unheard-of", "UTF-8", TOpening::Either},
        {"unheard-of", "ISO-8859-1", TOpening::Refused},
        {"", "UTF-8", TOpening::Either},
        {"UTF-7", "UTF-8", TOpening::Either},
        {"IBM037", "UTF-8", TOpening::Either},
    };

    for (const auto& [declared, used, expected] : ROWS) {
        const QString text = Declared(declared);
        const QString name = QString("Declared_%1_in_%2").arg(declared, used).replace('-', '_');
        const char* codec = used;

        Add(files, name, expected, [=] { return Encoded(text, codec); });
        Add(files, name + "_cut_off", TOpening::Refused, [=] {
            const QByteArray bytes = Encoded(text, codec);
            return bytes.left(bytes.size() - 3);
        });
    }
}

void Add_Byte_Orders(TFiles* files)
{
    const auto add = [=](const char* name, TOpening expected, const QByteArray& front, const char* codec) {
        Add(files, name, expected, [=] {
            // Without a mark of its own.
            QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
            const QString text = Budget();
            return front + QTextCodec::codecForName(codec)->fromUnicode(text.constData(), text.size(), &state);
        });
    };

    add("Mark_of_utf_8", TOpening::Loads, "\xEF\xBB\xBF", "UTF-8");
    add("Two_marks_of_utf_8", TOpening::Either, "\xEF\xBB\xBF\xEF\xBB\xBF", "UTF-8");
    add("Mark_of_utf_16_le", TOpening::Loads, "\xFF\xFE", "UTF-16LE");
    add("Mark_of_utf_16_be", TOpening::Loads, "\xFE\xFF", "UTF-16BE");
    add("Mark_of_utf_32_le", TOpening::Loads, QByteArray("\xFF\xFE\0\0", 4), "UTF-32LE");
    add("Mark_of_utf_32_be", TOpening::Loads, QByteArray("\0\0\xFE\xFF", 4), "UTF-32BE");
    add("Wrong_mark_of_utf_16", TOpening::Refused, "\xFE\xFF", "UTF-16LE");
    add("Wrong_mark_of_utf_8", TOpening::Refused, "\xEF\xBB\xBF", "UTF-16LE");
    add("Mark_of_utf_16_on_utf_8", TOpening::Refused, "\xFF\xFE", "UTF-8");
    add("No_mark_of_utf_16_le", TOpening::Refused, "", "UTF-16LE");
    add("No_mark_of_utf_16_be", TOpening::Refused, "", "UTF-16BE");
    add("No_mark_of_utf_32", TOpening::Refused, "", "UTF-32LE");
    add("Blank_in_front", TOpening::Refused, " ", "UTF-8");
    Add(files, "Half_a_character_in_utf_16", TOpening::Refused, [] {
        const QString text = QString::fromUtf8(With_Name("half")).replace("half", QChar(0xD835));
        return QTextCodec::codecForName("UTF-16")->fromUnicode(text);
    });
    add("Zero_in_front", TOpening::Refused, QByteArray(1, '\0'), "UTF-8");
}

// Attributes

void Add_Attributes(TFiles* files)
{
    for (const int size : {1, 10, 50}) {
        Add(files, QString("Attribute_of_%1_MB").arg(size), TOpening::Loads,
            [=] { return With_Root_Attributes("a=\"" + QString(size * MEGABYTE, 'x') + '"'); });
        Add(files, QString("Name_of_an_attribute_of_%1_MB").arg(size), TOpening::Either,
            [=] { return With_Root_Attributes(QString(size * MEGABYTE, 'x') + "=\"\""); });
    }
    for (const int count : {5000, 20'000, 1'000'000}) {
        const TOpening expected = count < 10'000 ? TOpening::Loads : TOpening::Refused;

        Add(files, QString("Attributes_%1").arg(count), expected,
            [=] { return With_Root_Attributes(Numbered(" a%=\"\"", count)); });
        Add(files, QString("Namespaces_%1").arg(count), TOpening::Either,
            [=] { return With_Root_Attributes(Numbered(" xmlns:a%=\"u%\"", count)); });
        Add(files, QString("Declared_attributes_%1").arg(count), TOpening::Either,
            [=] { return With_Subset(Numbered("<!ATTLIST Name a% CDATA \"x\">", count), "Probe"); });
        Add(files, QString("Elements_with_%1_attributes").arg(2 * count),
            2 * count < 2'000'000 ? TOpening::Loads : TOpening::Refused,
            [=] { return With_Content(Times(count, "<a b=\"c\" d=\"e\"/>")); });
    }
    Add(files, "Namespaces_of_10_MB", TOpening::Refused, [] {
        const QString address(10 * MEGABYTE, 'u');
        return With_Content(QString("<p xmlns:a=\"%11\" xmlns:b=\"%12\">").arg(address, address) +
                            Times(10'000, "<a a:x=\"\" b:x=\"\"/>") + "</p>");
    });
    Add(files, "Long_prefixes", TOpening::Refused, [] {
        const QString prefixes = Numbered(" xmlns:" + QString(4000, 'p') + "%=\"u\"", 99);
        return With_Content("<p" + prefixes + ">" + Times(10'000, "<a/>") + "</p>");
    });
    Add(files, "Attributes_below_declared_ones", TOpening::Refused, [] {
        const QString declared = "<!ATTLIST Name" + Numbered(" d% ID ''", 5000) + ">";
        return With_Subset(declared, Times(9000, "<p" + Numbered(" a%=''", 100) + "/>"));
    });
    Add(files, "Attribute_twice", TOpening::Refused, [] { return With_Root_Attributes("a=\"\" a=\"\""); });
    Add(files, "Attribute_without_quotes", TOpening::Refused, [] { return With_Root_Attributes("a=b"); });
    Add(files, "Attribute_without_value", TOpening::Refused, [] { return With_Root_Attributes("a"); });
    Add(files, "Attribute_with_opening_sign", TOpening::Refused, [] { return With_Root_Attributes("a=\"<\""); });
    Add(files, "Attribute_never_closed", TOpening::Refused, [] { return With_Root_Attributes("a=\""); });
    Add(files, "Namespace_twice", TOpening::Refused,
        [] { return With_Root_Attributes(R"(xmlns:a="u" xmlns:b="u" a:x="" b:x="")"); });
    Add(files, "Namespace_not_declared", TOpening::Refused, [] { return With_Content("<n:a/>"); });
    Add(files, "Namespace_of_xml", TOpening::Refused, [] { return With_Root_Attributes(R"(xmlns:xml="u")"); });
}

// Roots

void Add_Roots(TFiles* files)
{
    const QStringList refused = {"<Other File_Version=\"3\">",
                                 "<norvexa_data File_Version=\"3\">",
                                 "<Norvexa_Data>",
                                 "<Norvexa_Data file_version=\"3\">",
                                 "<Norvexa_Data File_Version=\"\">",
                                 "<Norvexa_Data File_Version=\"three\">",
                                 "<Norvexa_Data File_Version=\"0\">",
                                 "<Norvexa_Data File_Version=\"-1\">",
                                 "<Norvexa_Data File_Version=\"4\">",
                                 "<Norvexa_Data File_Version=\"3.0\">",
                                 "<Norvexa_Data File_Version=\"4294967299\">",
                                 "<Norvexa_Data File_Version=\"1e0\">",
                                 "<Norvexa_Data File_Version=\"0x3\">",
                                 "<Norvexa_Data File_Version=\"3\"/>",
                                 "<Norvexa_Data File_Version=\"3\"><Norvexa_Data File_Version=\"3\">",
                                 "",
                                 "text<Norvexa_Data File_Version=\"3\">"};

    for (int index = 0; index < refused.size(); ++index) {
        const QString& root = refused.at(index);
        const QString tag = root.mid(root.indexOf('<') + 1).section(QRegularExpression("[ >]"), 0, 0);

        Add(files, QString("Root_%1").arg(index), TOpening::Refused,
            [=] { return QString(With_Root(root)).replace("</Norvexa_Data>", "</" + tag + ">").toUtf8(); });
    }
    Add(files, "Root_in_a_namespace", TOpening::Loads,
        [] { return With_Root_Attributes(R"(xmlns="u" xmlns:n="v" n:a="9")"); });
    Add(files, "Two_roots", TOpening::Refused, [] { return Small_Budget() + ROOT + "</Norvexa_Data>"; });
    Add(files, "Text_behind_the_root", TOpening::Refused, [] { return Small_Budget() + "text"; });
    Add(files, "Comment_behind_the_root", TOpening::Loads, [] { return Small_Budget() + "<!-- -->\n"; });
    Add(files, "Zeros_behind_the_root", TOpening::Refused, [] { return Small_Budget() + QByteArray(100, '\0'); });
    Add(files, "Wrong_closing_tag", TOpening::Refused,
        [] { return Small_Budget().replace("</Norvexa_Data>", "</Components>"); });
}

// Document types, instructions, comments and sections

void Add_Document_Types(TFiles* files)
{
    const auto add = [=](const char* name, TOpening expected, const QString& type) {
        Add(files, name, expected, [=] { return Replaced(ROOT, type + ROOT); });
    };

    add("Document_type_of_another_root", TOpening::Either, "<!DOCTYPE html>");
    add("Document_type_with_public_name", TOpening::Either, R"(<!DOCTYPE Norvexa_Data PUBLIC "-//A//B" "c.dtd">)");
    add("Document_type_with_elements", TOpening::Loads, "<!DOCTYPE Norvexa_Data [<!ELEMENT Name (#PCDATA)>]>");
    add("Document_type_with_notation", TOpening::Either, R"(<!DOCTYPE Norvexa_Data [<!NOTATION n SYSTEM "n">]>)");
    add("Document_type_with_unparsed_entity", TOpening::Either,
        R"(<!DOCTYPE Norvexa_Data [<!NOTATION n SYSTEM "n"><!ENTITY e SYSTEM "f" NDATA n>]>)");
    add("Document_type_twice", TOpening::Refused, "<!DOCTYPE a><!DOCTYPE b>");
    add("Document_type_without_name", TOpening::Refused, "<!DOCTYPE>");
    add("Document_type_never_closed", TOpening::Refused, "<!DOCTYPE Norvexa_Data [");
    add("Document_type_with_condition", TOpening::Refused, "<!DOCTYPE Norvexa_Data [<![IGNORE[ x ]]>]>");
    add("Document_type_with_rubbish", TOpening::Refused, "<!DOCTYPE Norvexa_Data [ rubbish ]>");
    add("Document_type_in_lower_case", TOpening::Refused, "<!doctype Norvexa_Data>");
    Add(files, "Document_type_within", TOpening::Refused, [] { return With_Content("<!DOCTYPE a>"); });
    Add(files, "Version_as_default", TOpening::Either, [] {
        return With_Subset("<!ATTLIST Norvexa_Data File_Version CDATA \"3\">", "Probe")
            .replace(" File_Version=\"3\"", "");
    });
}

void Add_Other_Nodes(TFiles* files)
{
    const auto add = [=](const char* name, TOpening expected, const QString& content) {
        Add(files, name, expected, [=] { return With_Content(content); });
    };

    add("Instruction", TOpening::Loads, "<?a b?>");
    add("Declaration_within", TOpening::Refused, DECLARATION);
    add("Instruction_never_closed", TOpening::Refused, "<?a b");
    add("Instruction_without_name", TOpening::Refused, "<? ?>");
    add("Comment_with_hyphens", TOpening::Refused, "<!-- -- -->");
    add("Comment_never_closed", TOpening::Refused, "<!-- ");
    add("Section_never_closed", TOpening::Refused, "<![CDATA[ ");
    add("End_of_a_section", TOpening::Refused, "]]>");
    add("Section_in_a_section", TOpening::Refused, "<![CDATA[<![CDATA[]]>]]>");
    add("Unknown_element", TOpening::Loads, "<Unknown><Name>x</Name></Unknown>");
    add("Name_twice", TOpening::Loads, "<Name>First</Name>");
    add("Tag_without_name", TOpening::Refused, "< a/>");
    add("Tag_with_digit", TOpening::Refused, "<1/>");
    add("Empty_tag", TOpening::Refused, "<>");
    Add(files, "Stylesheet", TOpening::Loads,
        [] { return Replaced(ROOT, R"(<?xml-stylesheet href="file:///etc/hostname"?>)" + QString(ROOT)); });
    Add(files, "Blank_section_as_name", TOpening::Refused, [] { return With_Name("<![CDATA[ ]]>"); });
    Add(files, "Section_as_name", TOpening::Loads, [] { return With_Name("<![CDATA[<a> & b]]>"); });
    Add(files, "Comment_as_name", TOpening::Refused, [] { return With_Name("<!-- -->Probe"); });
    Add(files, "Element_as_name", TOpening::Refused, [] { return With_Name("<b>Probe</b>"); });
    const struct
    {
        const char* kind;
        const char* node;
    } NODES[] = {{"Instructions", "<?a b?>"}, {"Comments", "<!---->"}, {"Sections", "<![CDATA[x]]>"}};

    for (const auto& [kind, node] : NODES) {
        const QString text = node;
        Add(files, QString("%1_500000").arg(kind), TOpening::Loads, [=] { return With_Content(Times(500'000, text)); });
        Add(files, QString("%1_4200000").arg(kind), TOpening::Refused,
            [=] { return With_Content(Times(4'200'000, text)); });
    }
}

// Sizes

void Add_Sizes(TFiles* files)
{
    Add(files, "Empty", TOpening::Refused, [] { return QByteArray(); });
    Add(files, "One_byte", TOpening::Refused, [] { return QByteArray("<"); });
    Add(files, "Blanks", TOpening::Refused, [] { return QByteArray(1000, ' '); });
    Add(files, "Zeros_10_MB", TOpening::Refused, [] { return QByteArray(10 * MEGABYTE, '\0'); });
    Add(files, "Blanks_63_MB", TOpening::Loads, [] { return With_Content(QString(63 * MEGABYTE, ' ')); });
    Add(files, "Larger_than_64_MB", TOpening::Refused, [] { return With_Content(QString(64 * MEGABYTE, ' ')); });
    Add(files, "Text_of_60_MB", TOpening::Loads, [] { return With_Name(QString(60 * MEGABYTE, 'x')); });
    Add(files, "Wide_text_of_60_MB", TOpening::Loads,
        [] { return With_Name(QString::fromUtf8("中").repeated(20 * MEGABYTE)); });
    Add(files, "Comment_of_60_MB", TOpening::Loads,
        [] { return With_Content("<!--" + QString(60 * MEGABYTE, 'x') + "-->"); });
    Add(files, "Name_of_an_element_of_30_MB", TOpening::Either, [] {
        const QString name(30 * MEGABYTE, 'x');
        return With_Content("<" + name + "></" + name + ">");
    });
    Add(files, "References_900000", TOpening::Loads, [] { return With_Name(Times(900'000, "&#x1D462;")); });
    Add(files, "References_60_MB", TOpening::Refused, [] { return With_Name(Times(12 * MEGABYTE, "&amp;")); });
    Add(files, "High_references_60_MB", TOpening::Refused, [] { return With_Name(Times(6 * MEGABYTE, "&#x1D462;")); });
    Add(files, "Line_breaks_10_MB", TOpening::Loads, [] { return With_Content(QString(10 * MEGABYTE, '\n')); });
    Add(files, "Number_of_1_MB", TOpening::Loads,
        [] { return Small_Budget().replace("<Length>25.5<", "<Length>" + QByteArray(MEGABYTE, '7') + "<"); });
}

// Counts of elements. The larger ones that load are near to what is read at all.

QByteArray With_Elements(int count, const QString& element)
{
    return With_Content(Times(count, element));
}

QByteArray With_Namespaces(int count, const QString& element)
{
    return With_Elements(count, element)
        .replace("<Norvexa_Data ", "<Norvexa_Data " + Numbered("xmlns:n%=\"u%\" ", 9).toUtf8());
}

QByteArray With_Variables(int count)
{
    const QString variables = Numbered("<Variable><Name>v%</Name><Description/></Variable>", count);
    return Small_Budget().replace("</Variables>", variables.toUtf8() + "</Variables>");
}

QByteArray With_Identifiers(int count)
{
    const QByteArray text = Small_Budget();
    const int begin = text.indexOf("<Identifier>");
    const QByteArray identifier = text.mid(begin, text.indexOf("</Identifiers>") - begin);

    return QByteArray(text).replace("</Identifiers>", identifier.repeated(count) + "</Identifiers>");
}

void Add_Counts(TFiles* files)
{
    const struct
    {
        const char* name;
        std::function<QByteArray(int)> make;
        int loads;
        int refused;
    } FILES[] = {
        {"Elements", [](int count) { return With_Elements(count, "<a/>"); }, 1'900'000, 2'100'000},
        {"Nested_elements",
         [](int count) { return With_Elements(count / 240, Times(240, "<a>") + Times(240, "</a>")); }, 1'000'000,
         1'900'000},
        {"Elements_with_attribute", [](int count) { return With_Elements(count, "<a b=\"\"/>"); }, 600'000, 1'100'000},
        {"Elements_with_text", [](int count) { return With_Elements(count, "<a>b</a>"); }, 650'000, 1'500'000},
        {"Elements_with_all", [](int count) { return With_Elements(count, "<a b=\"c\">d<?e?></a>"); }, 330'000,
         700'000},
        {"Elements_with_reference", [](int count) { return With_Elements(count, "<a>&lt;</a>"); }, 500'000, 1'100'000},
        {"Elements_with_prefix", [](int count) { return With_Namespaces(count, "<n1:a/>"); }, 400'000, 900'000},
        {"Elements_with_namespace", [](int count) { return With_Elements(count, "<a xmlns=\"u\"/>"); }, 900'000,
         1'800'000},
        {"Variables", With_Variables, 250'000, 700'000},
        {"Identifiers_of_one_name", With_Identifiers, 80'000, 170'000}};

    for (const auto& file : FILES) {
        const auto make = file.make;
        const int loads = file.loads;
        const int refused = file.refused;

        Add(files, QString("%1_%2").arg(file.name).arg(loads), TOpening::Loads, [=] { return make(loads); });
        Add(files, QString("%1_%2").arg(file.name).arg(refused), TOpening::Refused, [=] { return make(refused); });
    }
}

// Records

/// Every element of the budget gone, empty or blank.
void Add_Missing_Elements(TFiles* files)
{
    QStringList names;
    QRegularExpressionMatchIterator tags = QRegularExpression("<([A-Z]\\w*)>").globalMatch(Budget());

    while (tags.hasNext()) {
        names.append(tags.next().captured(1));
    }
    names.removeDuplicates();
    for (const QString& name : names) {
        const auto replaced = [=](const QString& replacement) {
            return Budget()
                .replace(QRegularExpression(QString("<%1>.*</%1>").arg(name),
                                            QRegularExpression::DotMatchesEverythingOption),
                         replacement)
                .toUtf8();
        };
        Add(files, "Without_" + name, TOpening::Either, [=] { return replaced(QString()); });
        Add(files, "Empty_" + name, TOpening::Either, [=] { return replaced(QString("<%1/>").arg(name)); });
        Add(files, "Blank_" + name, TOpening::Either, [=] { return replaced(QString("<%1>&#32;</%1>").arg(name)); });
    }
}

void Add_Numbers(TFiles* files)
{
    const QStringList numbers = {"nan", "inf",  "-inf",   "1e308", "-1e308",     "1e309", "1e-320", "-0",     "1,5",
                                 "0x1", "1e",   "--1",    "٣",     "１",         "+1",    "1 000",  "1e9999", "five",
                                 "1.",  "1.5m", "1e-999", "1E+5",  "2147483648", ".",     "1..2",   "∞",      "½"};

    for (int index = 0; index < numbers.size(); ++index) {
        const QByteArray number = numbers.at(index).toUtf8();

        Add(files, QString("Number_%1").arg(index), TOpening::Loads, [=] {
            return QString(Small_Budget())
                .replace(QRegularExpression(">-?[0-9.]+<"), ">" + QString::fromUtf8(number) + "<")
                .toUtf8();
        });
    }
}

// Random bytes and other kinds of files

void Add_Other_Files(TFiles* files, unsigned int seed)
{
    const std::vector<QByteArray> heads = {QByteArray("\x1F\x8B\x08\0", 4),
                                           "\x89PNG\r\n\x1A\n",
                                           "%PDF-1.7\n",
                                           "PK\x03\x04",
                                           "\177ELF\002\001",
                                           "{\"Norvexa_Data\": []}",
                                           "GIF89a",
                                           "<!DOCTYPE html><html>",
                                           "#!/bin/sh\n",
                                           "BZh9"};

    for (std::size_t index = 0; index < 2 * heads.size(); ++index) {
        const QByteArray head = index < heads.size() ? heads[index] : QByteArray();

        Add(files, QString("Random_bytes_%1").arg(index), TOpening::Refused, [=] {
            std::mt19937 random(seed + static_cast<unsigned int>(index));
            QByteArray bytes = head;
            std::generate_n(std::back_inserter(bytes), random() % 100'000, [&] { return static_cast<char>(random()); });
            return bytes;
        });
    }
    for (int index = 0; index < 20; ++index) {
        Add(files, QString("Mutation_%1").arg(index), TOpening::Either, [=] {
            std::mt19937 random(seed + 1000U + static_cast<unsigned int>(index));
            QByteArray bytes = Small_Budget();
            for (int count = 0; count < index; ++count) {
                bytes = Mutated_Bytes(bytes, &random);
            }
            return bytes;
        });
    }
}

} // namespace

TFiles Hostile_Files(unsigned int seed)
{
    TFiles files;

    Add_Entity_Bombs(&files);
    Add_Entities(&files);
    Add_External_Entities(&files);
    Add_Nesting(&files);
    Add_High_Characters(&files);
    Add_Control_Characters(&files);
    Add_Encodings(&files);
    Add_Byte_Orders(&files);
    Add_Attributes(&files);
    Add_Roots(&files);
    Add_Document_Types(&files);
    Add_Other_Nodes(&files);
    Add_Sizes(&files);
    Add_Counts(&files);
    Add_Missing_Elements(&files);
    Add_Numbers(&files);
    Add_Other_Files(&files, seed);
    return files;
}

QByteArray Small_Budget()
{
    return QByteArray(DECLARATION) + ROOT + R"(
    <Components>
        <Component>
            <Name>Probe</Name>
            <Mode>Individual</Mode>
            <Export_Equipment>Yes</Export_Equipment>
            <Limit_Uncertainty_Length>No</Limit_Uncertainty_Length>
            <Length>25.5</Length>
            <Expansion_Coefficient>11.12</Expansion_Coefficient>
            <Identifiers>
                <Identifier>
                    <Name>P-1</Name>
                    <Calibration_Date>Mar 5 2021</Calibration_Date>
                    <Calibration_Due_Date>next year</Calibration_Due_Date>
                    <Length>-1.000000</Length>
                    <Expansion_Coefficient>0.50</Expansion_Coefficient>
                </Identifier>
            </Identifiers>
            <Component_Items>
                <Item>
                    <Name>Repeatability &amp;lt; 1</Name>
                    <Expression>SUMSQ(MSD / 1000, 0.2*L)</Expression>
                    <Distribution>Triangular</Distribution>
                    <Expression_Type>Constant Linear</Expression_Type>
                    <Uncertainty_Type>Type A</Uncertainty_Type>
                    <Sensitivity>0.333333</Sensitivity>
                    <Replacement_Items>
                        <Item>
                            <Identifier>P-1</Identifier>
                            <Expression>0.0002</Expression>
                            <Use_Default_Expression>No</Use_Default_Expression>
                        </Item>
                    </Replacement_Items>
                </Item>
            </Component_Items>
        </Component>
        <Component>
            <Name>Scale</Name>
            <Mode>Sum</Mode>
            <Export_Equipment>No</Export_Equipment>
            <Limit_Uncertainty_Length>Yes</Limit_Uncertainty_Length>
            <Length>0.000000</Length>
            <Expansion_Coefficient>10.00</Expansion_Coefficient>
            <Identifiers/>
            <Component_Items/>
        </Component>
    </Components>
    <Variables>
        <Variable>
            <Name>MSD</Name>
            <Description>Mean of the last year</Description>
        </Variable>
    </Variables>
    <Report_Groups>
        <Group>
            <Name>All</Name>
            <Items>
                <Item>Scale</Item>
                <Item>Probe - Repeatability &amp;lt; 1</Item>
            </Items>
        </Group>
    </Report_Groups>
    <User_Input>
        <Machine_Expansion_Coefficient>11.50</Machine_Expansion_Coefficient>
        <Machine_Scale>0.000100</Machine_Scale>
        <Temperature_Minimum>19.50</Temperature_Minimum>
        <Temperature_Maximum>20.75</Temperature_Maximum>
        <Temperature_Gradient>0.25</Temperature_Gradient>
        <Report_Start>0.000</Report_Start>
        <Report_Increment>12.500</Report_Increment>
        <Report_End>500.125</Report_End>
    </User_Input>
</Norvexa_Data>
)";
}

QByteArray Mutated_Bytes(QByteArray bytes, std::mt19937* random)
{
    static const std::vector<QByteArray> PIECES = {"<",
                                                   ">",
                                                   "/>",
                                                   "</",
                                                   "&",
                                                   ";",
                                                   "\"",
                                                   "=",
                                                   "&#0;",
                                                   "&#x1D462;",
                                                   "<![CDATA[",
                                                   "]]>",
                                                   "<!--",
                                                   "-->",
                                                   "<?",
                                                   "?>",
                                                   "<!DOCTYPE",
                                                   "<!ENTITY",
                                                   "&amp;",
                                                   "\xFF\xFE",
                                                   "\xC3",
                                                   "\xF0\x9D",
                                                   QByteArray(1, '\0'),
                                                   "\r\n",
                                                   "xmlns=\"\"",
                                                   "<Name>",
                                                   "</Item>",
                                                   "1e308",
                                                   "nan",
                                                   "<Item/>",
                                                   "UTF-16",
                                                   "<Name/>"};
    const auto below = [random](int limit) { return static_cast<int>((*random)() % static_cast<unsigned int>(limit)); };

    for (int count = 1 + below(4); count > 0; --count) {
        const int at = below(bytes.size() + 1);
        const int from = below(bytes.size() + 1);
        const int length = below(below(8) == 0 ? 500 : 8);

        switch (below(6)) {
        case 0:
            bytes.remove(at, length);
            break;
        case 1:
            bytes.insert(at, bytes.mid(from, length));
            break;
        case 2:
            bytes.replace(at, length, bytes.mid(from, length));
            break;
        case 3:
            bytes.insert(at, PIECES[static_cast<std::size_t>(below(static_cast<int>(PIECES.size())))]);
            break;
        case 4:
            bytes.replace(at, 1, QByteArray(1, static_cast<char>(below(256))));
            break;
        default:
            if (at < bytes.size()) {
                bytes[at] = static_cast<char>(bytes.at(at) ^ (1 << below(8)));
            }
        }
    }
    return bytes;
}

bool Is_Refusal(const QString& error)
{
    return (error.startsWith("ERR:  ") && error.size() > 20) || error == "Norvexa_Data file version not supported";
}
