#include "core/xmlparser.h"

#include "core/xmllimits.h"
#include "core/xmlmarkup.h"
#include "core/xmlpolicy.h"
#include "core/xmltext.h"

#include <QRegularExpression>
#include <QTextCodec>
#include <QXmlInputSource>
#include <QXmlSimpleReader>
#include <QXmlStreamReader>

namespace {

// A document that was decoded and checked.
struct TXmlText
{
    QString characters;
    bool is_plain = false; // neither namespaces nor a document type
};

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

// Where half of a character beyond U+FFFF stands alone; -1 if none does.
int Find_Lone_Surrogate(const QString& text)
{
    for (int index = 0; index < text.size(); ++index) {
        const QChar unit = text.at(index);
        const bool is_pair = unit.isHighSurrogate() && index + 1 < text.size() && text.at(index + 1).isLowSurrogate();

        if (unit.isSurrogate() && !is_pair) {
            return index;
        }
        index += is_pair ? 1 : 0;
    }
    return -1;
}

// Decoders put a character of its own in the place of what they cannot read, but those of UTF-16 and UTF-32 let halves
// of characters pass.
int Find_Broken_Character(const QString& text)
{
    const int surrogate = Find_Lone_Surrogate(text);
    const int replaced = text.indexOf(QChar::ReplacementCharacter);

    if (surrogate >= 0) {
        return surrogate;
    }
    return replaced < 0 ? text.size() : replaced;
}

// Decodes once, so that the check and the parser see the same characters. A byte order mark wins over the declaration.
bool Decode(const QByteArray& bytes, QString* text, TXmlFault* fault)
{
    QTextCodec* codec = QTextCodec::codecForUtfText(bytes, Declared_Codec(bytes));
    QTextCodec::ConverterState state;

    *text = codec->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0 && text->isValidUtf16()) {
        return true;
    }
    *fault = Fault_At("Encountered incorrectly encoded content.", Position_At(*text, Find_Broken_Character(*text)));
    return false;
}

// The reader has no printable name for a character that XML cannot carry.
QString Readable_Reason(const QXmlStreamReader& reader, const QString& checked)
{
    return Xml_Is_Legal(checked) ? reader.errorString() : QString("Invalid XML character.");
}

const char NAMESPACES[] = "http://xml.org/sax/features/namespaces";

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

// Qt's parser takes up to half of its time to look for namespaces. This one does not, for plain documents, but says
// that it does: then the document is built as if it had, its nodes with local names.
class TPlainReader : public QXmlSimpleReader
{
public:
    TPlainReader()
    {
        setFeature(NAMESPACES, false);
        setFeature("http://xml.org/sax/features/namespace-prefixes", false);
        setFeature("http://trolltech.com/xml/features/report-whitespace-only-CharData", false);
    }

    bool feature(const QString& name, bool* ok = nullptr) const override
    {
        const bool value = QXmlSimpleReader::feature(name, ok);
        return value || name == NAMESPACES;
    }
};

bool Build_Plain_Document(const QString& text, QDomDocument* document, TXmlFault* fault)
{
    TPlainReader reader;
    QXmlInputSource source;

    source.setData(text);
    return document->setContent(&source, &reader, &fault->reason, &fault->line, &fault->column);
}

QT_WARNING_POP

bool Build_Document(const TXmlText& text, bool namespace_processing, QDomDocument* document, TXmlFault* fault)
{
    // Under the other policies the parser crashes on characters beyond U+FFFF.
    const TXmlPolicy policy(QDomImplementation::AcceptInvalidChars);

    if (namespace_processing && text.is_plain) {
        return Build_Plain_Document(text.characters, document, fault);
    }
    return document->setContent(text.characters, namespace_processing, &fault->reason, &fault->line, &fault->column);
}

// The document parser's own words for what the check found at the end of `checked`, where it stumbles over the same
// text. It sees no more than that, so an end that comes too early says nothing, unless the whole text ends there.
bool Parser_Fault(const QString& checked, bool is_whole, bool namespace_processing, TXmlFault* fault)
{
    QDomDocument discarded;

    // A document type whose end the check has not seen may hold anything.
    if (checked.contains(QLatin1String("<!DOCTYPE")) ||
        Build_Document({checked, false}, namespace_processing, &discarded, fault)) {
        return false;
    }
    const TPosition end = Position_At(checked, checked.size());
    return is_whole || fault->line != end.line || fault->column < end.column;
}

bool Has_Character_References(const QString& text)
{
    int at = text.indexOf('&');
    while (at >= 0 && text.midRef(at + 1, 1) != "#") {
        at = text.indexOf('&', at + 1);
    }
    return at >= 0;
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
    static const QRegularExpression REFERENCE("&#(x?[0-9A-Fa-f]+);");

    if (!Has_Character_References(text)) {
        return text;
    }
    QString result;
    int done = 0;
    TXmlMarkup section = Xml_Next_Section(text, 0);
    for (QRegularExpressionMatchIterator matches = REFERENCE.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const QString character = Character(match.capturedRef(1));

        while (section.end <= match.capturedStart()) {
            section = Xml_Next_Section(text, section.end);
        }
        if (!character.isEmpty() && match.capturedStart() < section.start) {
            result += text.midRef(done, match.capturedStart() - done) + character;
            done = match.capturedEnd();
        }
    }
    return result + text.midRef(done);
}

// Reading one tag or one document type must stay quick too, so its attributes are bounded beforehand.
bool Has_Few_Attributes(const QString& text, TXmlFault* fault)
{
    const int excess = Xml_Find_Excess_Of_Attributes(text);

    if (excess >= 0) {
        *fault = Fault_At("too many attributes", Position_At(text, excess));
    }
    return excess < 0;
}

// The first characters of `text`, which must live longer.
QString Beginning(const QString& text, int size)
{
    return QString::fromRawData(text.constData(), size);
}

// The streaming pass: one token after the other, nothing kept but counts. Returns how much of the text it read until it
// was no longer well-formed; -1 if it is, or if there is too much of something.
int Stream(bool namespace_processing, TXmlText* text, TXmlFault* fault)
{
    QXmlStreamReader reader(text->characters);
    TXmlLimits limits(text->characters);

    *fault = {};
    reader.setNamespaceProcessing(namespace_processing);
    while (!reader.atEnd()) {
        limits.Bound_Expansion(&reader);
        reader.readNext();
        const QString excess = limits.Count(reader);
        if (!excess.isEmpty()) {
            *fault = Fault_At(excess, reader);
            return -1;
        }
    }
    text->is_plain = limits.Is_Plain();
    if (!reader.hasError()) {
        return -1;
    }
    const int checked = qMin(static_cast<int>(reader.characterOffset()), text->characters.size());
    *fault = Fault_At(Readable_Reason(reader, Beginning(text->characters, checked)), reader);
    return checked;
}

bool Check(bool namespace_processing, TXmlText* text, TXmlFault* fault)
{
    // The reader's memory is given back before a document is built.
    const int size = Stream(namespace_processing, text, fault);
    const bool is_whole = size == text->characters.size();
    TXmlFault parser_fault;

    if (size >= 0 && Parser_Fault(Beginning(text->characters, size), is_whole, namespace_processing, &parser_fault)) {
        *fault = parser_fault;
    }
    return fault->reason.isEmpty();
}

// All that a document is checked for before it is built.
bool Decode_And_Check(const QByteArray& bytes, bool namespace_processing, TXmlText* text, TXmlFault* fault)
{
    if (bytes.size() > XML_MAXIMUM_SIZE) {
        *fault = Xml_Size_Fault();
        return false;
    }
    return Decode(bytes, &text->characters, fault) && Has_Few_Attributes(text->characters, fault) &&
           Check(namespace_processing, text, fault);
}

} // namespace

TXmlFault Xml_Size_Fault()
{
    return {"larger than 64 MB", 1, 1};
}

QString Xml_Excess(const QByteArray& bytes)
{
    TXmlText text;
    TXmlFault fault;

    if (bytes.size() <= XML_MAXIMUM_SIZE && Xml_Is_Surely_Small(bytes)) {
        return QString();
    }
    return Decode_And_Check(bytes, true, &text, &fault) ? QString() : fault.reason;
}

bool Xml_Parse(const QByteArray& bytes, bool namespace_processing, QDomDocument* document, TXmlFault* fault)
{
    TXmlText text;

    if (!Decode_And_Check(bytes, namespace_processing, &text, fault)) {
        return false;
    }
    text.characters = With_High_Characters(text.characters);
    return Build_Document(text, namespace_processing, document, fault);
}
