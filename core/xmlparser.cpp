#include "core/xmlparser.h"

#include "core/xmlpolicy.h"
#include "core/xmltext.h"

#include <QRegularExpression>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

// Qt's parser calls itself for each level and overflows the stack at some 25,000.
constexpr int MAXIMUM_DEPTH = 256;
constexpr int MAXIMUM_ELEMENTS = 2'000'000;
constexpr int MAXIMUM_ENTITIES = 64;
constexpr int MAXIMUM_EXPANSION = 10 * 1024 * 1024;
// Comparing each attribute of an element with each other must stay quick: 10,000 attributes in one element, or more
// elements with fewer. A usual number of them never matters.
constexpr qint64 MAXIMUM_ATTRIBUTE_PAIRS = 100'000'000;
constexpr qint64 USUAL_ATTRIBUTES = 100;

struct TPosition
{
    int line;
    int column;
};

// The position of the character at `offset`, both counted from 1.
TPosition Position_At(const QString& text, int offset)
{
    const QStringRef before = text.leftRef(offset);
    return {before.count('\n') + 1, before.size() - before.lastIndexOf('\n')};
}

TXmlFault Fault_At(const QString& reason, const TPosition& position)
{
    return {reason, position.line, position.column};
}

TXmlFault Fault_At(const QString& reason, const QXmlStreamReader& reader)
{
    return {reason, static_cast<int>(reader.lineNumber()), static_cast<int>(reader.columnNumber())};
}

QTextCodec* Declared_Codec(const QByteArray& bytes)
{
    static const QRegularExpression DECLARATION(R"(^<\?xml\s[^>]*\bencoding\s*=\s*["']([A-Za-z0-9._\-]+)["'])");
    constexpr int DECLARATION_SIZE = 256;

    const QString head = QString::fromLatin1(bytes.left(DECLARATION_SIZE));
    QTextCodec* codec = QTextCodec::codecForName(DECLARATION.match(head).captured(1).toLatin1());
    return codec ? codec : QTextCodec::codecForName("UTF-8");
}

// Decodes once, so that the check and the parser see the same characters. A byte order mark wins over the declaration.
bool Decode(const QByteArray& bytes, QString* text, TXmlFault* fault)
{
    QTextCodec* codec = QTextCodec::codecForUtfText(bytes, Declared_Codec(bytes));
    QTextCodec::ConverterState state;

    *text = codec->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0) {
        return true;
    }
    const int replaced = text->indexOf(QChar::ReplacementCharacter);
    *fault = Fault_At("Encountered incorrectly encoded content.",
                      Position_At(*text, replaced < 0 ? text->size() : replaced));
    return false;
}

// The readers compare every attribute of an element with every other one, so their number is bounded beforehand. An
// element's attributes all stand in front of the next "<".
bool Has_Few_Attributes(const QString& text, TXmlFault* fault)
{
    const QStringRef whole(&text);
    qint64 pairs = 0;
    int start = 0;

    while (start < text.size() && pairs <= MAXIMUM_ATTRIBUTE_PAIRS) {
        const int next = text.indexOf('<', start + 1);
        const int end = next < 0 ? text.size() : next;
        const qint64 attributes = whole.mid(start, end - start).count('=');
        pairs += attributes > USUAL_ATTRIBUTES ? attributes * attributes : 0;
        start = end;
    }
    if (pairs > MAXIMUM_ATTRIBUTE_PAIRS) {
        *fault = Fault_At("too many attributes", Position_At(text, start));
        return false;
    }
    return true;
}

// The references that may expand: general and parameter entities, not those that XML itself declares.
int Reference_Count(const QString& text)
{
    int count = text.count('%') + text.count('&');

    for (const char* declared : {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;", "&#"}) {
        count -= text.count(declared);
    }
    return count;
}

// How far one reference may expand so that all of them together stay within the limit.
int Expansion_Share(const QString& text)
{
    return text.contains("<!ENTITY") ? MAXIMUM_EXPANSION / qMax(1, Reference_Count(text)) : MAXIMUM_EXPANSION;
}

qint64 Token_Length(const QXmlStreamReader& reader)
{
    qint64 length = reader.text().size();
    const QXmlStreamAttributes attributes = reader.attributes();

    for (const QXmlStreamAttribute& attribute : attributes) {
        length += attribute.value().size();
    }
    return length;
}

// The streaming pass: one token after the other, nothing kept but these counts.
struct TCounts
{
    int depth = 0;
    int elements = 0;
    qint64 length = 0;
};

void Count_Token(const QXmlStreamReader& reader, TCounts* counts)
{
    counts->length += Token_Length(reader);
    if (reader.isStartElement()) {
        ++counts->depth;
        ++counts->elements;
    } else if (reader.isEndElement()) {
        --counts->depth;
    }
}

// What the latest token is too much of; empty as long as all is within the limits.
QString Excess(const QXmlStreamReader& reader, const TCounts& counts, qint64 size)
{
    if (counts.depth > MAXIMUM_DEPTH) {
        return QString("elements nested deeper than %1 levels").arg(MAXIMUM_DEPTH);
    }
    if (counts.elements > MAXIMUM_ELEMENTS) {
        return QString("more than %1 elements").arg(MAXIMUM_ELEMENTS);
    }
    if (reader.isDTD() && reader.entityDeclarations().size() > MAXIMUM_ENTITIES) {
        return QString("more than %1 entity declarations").arg(MAXIMUM_ENTITIES);
    }
    if (counts.length > size + MAXIMUM_EXPANSION) {
        return "entities expand to more than 10 MB";
    }
    return QString();
}

// The reader has no printable name for a character that XML cannot carry.
QString Readable_Reason(const QXmlStreamReader& reader, const QString& checked)
{
    return Xml_Is_Legal(checked) ? reader.errorString() : QString("Invalid XML character.");
}

bool Build_Document(const QString& text, bool namespace_processing, QDomDocument* document, TXmlFault* fault)
{
    // Under the other policies the parser crashes on characters beyond U+FFFF.
    const TXmlPolicy policy(QDomImplementation::AcceptInvalidChars);

    return document->setContent(text, namespace_processing, &fault->reason, &fault->line, &fault->column);
}

// The document parser's own words for what the check found at the end of `checked`, where it stumbles over the same
// text. It sees no more than that, so an end that comes too early says nothing, unless the whole text ends there.
bool Parser_Fault(const QString& checked, bool is_whole, bool namespace_processing, TXmlFault* fault)
{
    QDomDocument discarded;

    if (Build_Document(checked, namespace_processing, &discarded, fault)) {
        return false;
    }
    const TPosition end = Position_At(checked, checked.size());
    return is_whole || fault->line != end.line || fault->column < end.column;
}

bool Check(const QString& text, bool namespace_processing, TXmlFault* fault)
{
    QXmlStreamReader reader(text);
    TCounts counts;

    reader.setNamespaceProcessing(namespace_processing);
    reader.setEntityExpansionLimit(Expansion_Share(text));
    while (!reader.atEnd()) {
        reader.readNext();
        Count_Token(reader, &counts);
        const QString excess = Excess(reader, counts, text.size());
        if (!excess.isEmpty()) {
            *fault = Fault_At(excess, reader);
            return false;
        }
    }
    if (!reader.hasError()) {
        return true;
    }
    const QString checked = text.left(static_cast<int>(reader.characterOffset()));
    if (!Parser_Fault(checked, checked.size() == text.size(), namespace_processing, fault)) {
        *fault = Fault_At(Readable_Reason(reader, checked), reader);
    }
    return false;
}

QString Character(const QStringRef& number)
{
    const bool is_hexadecimal = number.startsWith('x');
    const uint code = is_hexadecimal ? number.mid(1).toUInt(nullptr, 16) : number.toUInt();

    return code > 0xFFFF ? QString::fromUcs4(&code, 1) : QString();
}

// Qt's parser cuts the code of a character reference to 16 bits, so those beyond U+FFFF are put in as characters. In
// comments, instructions and CDATA sections they are no references.
QString With_High_Characters(const QString& text)
{
    static const QRegularExpression REFERENCE(R"(<!--.*?-->|<\?.*?\?>|<!\[CDATA\[.*?\]\]>|&#(x?[0-9A-Fa-f]+);)",
                                              QRegularExpression::DotMatchesEverythingOption);

    if (!text.contains("&#")) {
        return text;
    }
    QString result;
    int done = 0;
    for (QRegularExpressionMatchIterator matches = REFERENCE.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const QString character = Character(match.capturedRef(1));
        if (!character.isEmpty()) {
            result += text.midRef(done, match.capturedStart() - done) + character;
            done = match.capturedEnd();
        }
    }
    return result + text.midRef(done);
}

} // namespace

TXmlFault Xml_Size_Fault()
{
    return {"larger than 64 MB", 1, 1};
}

bool Xml_Parse(const QByteArray& bytes, bool namespace_processing, QDomDocument* document, TXmlFault* fault)
{
    if (bytes.size() > XML_MAXIMUM_SIZE) {
        *fault = Xml_Size_Fault();
        return false;
    }
    QString text;
    return Decode(bytes, &text, fault) && Has_Few_Attributes(text, fault) && Check(text, namespace_processing, fault) &&
           Build_Document(With_High_Characters(text), namespace_processing, document, fault);
}
