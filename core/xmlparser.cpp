#include "core/xmlparser.h"

#include "core/xmlpolicy.h"
#include "core/xmltext.h"

#include <QRegularExpression>
#include <QTextCodec>
#include <QXmlInputSource>
#include <QXmlSimpleReader>
#include <QXmlStreamReader>

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

// Qt's parser calls itself for each level and overflows the stack at some 25,000.
constexpr int MAXIMUM_DEPTH = 256;
constexpr int MAXIMUM_ELEMENTS = 2'000'000;
constexpr int MAXIMUM_ENTITIES = 64;
constexpr int MAXIMUM_EXPANSION = 10 * 1024 * 1024;
// The readers compare each attribute of an element, each attribute that the document type declares and each namespace
// with each other. That must stay quick: 10,000 attributes in one element, or more elements with fewer. A usual number
// of them never matters.
constexpr qint64 MAXIMUM_PAIRS = 100'000'000;
constexpr int MAXIMUM_DECLARED_ATTRIBUTES = 10'000;
constexpr qint64 USUAL_ATTRIBUTES = 100;
constexpr qint64 USUAL_NAMESPACES = 10;
// What takes time and memory adds up. The unit is what one character takes (measured: 35 ns and 8 bytes). The maximum
// lets pass two million elements without content, and budgets of 40,000 items with three replacements each; no document
// within it takes 1 GB.
constexpr qint64 MAXIMUM_COST = 110'000'000;
constexpr qint64 COST_OF_ELEMENT = 36;
constexpr qint64 COST_OF_NAMESPACE = 14; // once where it is declared and once for each element that it holds in
constexpr qint64 COST_OF_ATTRIBUTE = 80;
constexpr qint64 COST_OF_TEXT = 50; // between tags; blanks alone make no node. Most texts go on into a record.
constexpr qint64 COST_OF_COMMENT = 20;
constexpr qint64 COST_OF_DECLARATION = 28;
constexpr qint64 COST_OF_REFERENCE = 35;
// At each element the levels above it and the attributes that the document type declares are passed, so many of them in
// the time of one character.
constexpr qint64 PASSED_AT_ONCE = 4;
// An attribute that is declared takes no less: " a ID ''".
constexpr int DECLARED_ATTRIBUTE_SIZE = 8;

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

// How many attributes the lists of a document type declare at most.
int Declared_Attributes(const QStringRef& text)
{
    const QLatin1String list("<!ATTLIST");
    int size = 0;

    for (int start = text.indexOf(list); start >= 0; start = text.indexOf(list, start + 1)) {
        const int next = text.indexOf('<', start + 1);
        size += (next < 0 ? text.size() : next) - start;
    }
    return size / DECLARED_ATTRIBUTE_SIZE;
}

// What begins with a "<".
struct TMarkup
{
    int start;               // the end of the text if there is none
    int end;                 // behind it, or where the next one begins
    bool is_section = false; // a comment, an instruction or a CDATA section, which holds no markup and no references
    qint64 attributes = 0;   // at most
};

// Where the first `unit` at or behind `from` is; the end of the text if there is none.
int Find(const QString& text, QChar unit, int from)
{
    const int index = text.indexOf(unit, from);
    return index < 0 ? text.size() : index;
}

// The end of the section that begins at `start`; `start` if none does.
int Section_End(const QString& text, int start)
{
    struct TMarks
    {
        QLatin1String begin;
        QLatin1String end;
    };
    static const TMarks SECTIONS[] = {{QLatin1String("<!--"), QLatin1String("-->")},
                                      {QLatin1String("<?"), QLatin1String("?>")},
                                      {QLatin1String("<![CDATA["), QLatin1String("]]>")}};

    // Nearly all markup is tags.
    const QChar sign = start + 1 < text.size() ? text.at(start + 1) : QChar();
    if (sign != '!' && sign != '?') {
        return start;
    }
    for (const TMarks& marks : SECTIONS) {
        if (text.midRef(start, marks.begin.size()) == marks.begin) {
            const int end = text.indexOf(marks.end, start + marks.begin.size());
            return end < 0 ? text.size() : end + marks.end.size();
        }
    }
    return start;
}

// The tag or declaration that begins at `start`. Inside quotes nothing ends it, and an equals sign is text.
TMarkup Tag_At(const QString& text, int start)
{
    TMarkup tag = {start, start + 1};

    while (tag.end < text.size() && text.at(tag.end) != '<' && text.at(tag.end) != '>') {
        const QChar unit = text.at(tag.end);
        const bool is_quote = unit == '"' || unit == '\'';

        tag.attributes += unit == '=' ? 1 : 0;
        tag.end = is_quote ? Find(text, unit, tag.end + 1) + 1 : tag.end + 1;
    }
    return tag;
}

// The first markup at or behind `from`.
TMarkup Next_Markup(const QString& text, int from)
{
    const int start = Find(text, '<', from);
    const int end = Section_End(text, start);

    return end > start ? TMarkup{start, end, true} : Tag_At(text, start);
}

// The same where entities are declared. The quotes around their texts may hold tags, in which references may stand for
// equals signs.
TMarkup Next_Rough_Markup(const QString& text, int from)
{
    const int start = Find(text, '<', from);
    const int end = Find(text, '<', start + 1);
    const QStringRef markup = text.midRef(start, end - start);

    return {start, end, false, markup.count('=') + markup.count("&#")};
}

qint64 Pairs(qint64 attributes)
{
    return attributes > USUAL_ATTRIBUTES ? attributes * attributes : 0;
}

// Where the elements first have too many attributes for the comparisons; -1 if they never do.
int Find_Excess_Of_Attributes(const QString& text)
{
    const bool has_entities = text.contains("<!ENTITY");
    const auto next_markup = has_entities ? Next_Rough_Markup : Next_Markup;

    // Nearly all files have so few that even one element with all of them would not have too many.
    if (Pairs(text.count('=') + (has_entities ? text.count("&#") : 0)) <= MAXIMUM_PAIRS) {
        return -1;
    }
    qint64 pairs = 0;
    for (TMarkup markup = next_markup(text, 0); markup.start < text.size();) {
        const TMarkup next = next_markup(text, markup.end);

        pairs += Pairs(markup.attributes);
        if (pairs > MAXIMUM_PAIRS) {
            return next.start;
        }
        markup = next;
    }
    return -1;
}

// Reading one tag or one document type must stay quick too, so its attributes are bounded beforehand.
bool Has_Few_Attributes(const QString& text, TXmlFault* fault)
{
    const bool is_declared = Declared_Attributes(QStringRef(&text)) > MAXIMUM_DECLARED_ATTRIBUTES;
    const int excess = is_declared ? 0 : Find_Excess_Of_Attributes(text);

    if (excess >= 0) {
        *fault = Fault_At("too many attributes", Position_At(text, excess));
    }
    return excess < 0;
}

QString Excess_Reason(const char* reason, qint64 maximum)
{
    return QString(reason).replace("%1", QString::number(maximum));
}

// How deep the parentheses in the declarations of a document type nest.
int Nesting(const QStringRef& text)
{
    int deepest = 0;
    int depth = 0;

    for (const QChar character : text) {
        if (character == '(') {
            deepest = qMax(deepest, ++depth);
        } else if (character == ')') {
            depth = qMax(0, depth - 1);
        } else if (character == '<') {
            depth = 0;
        }
    }
    return deepest;
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
int Expansion_Share(const QString& text, int limit)
{
    return text.contains("<!ENTITY") ? limit / qMax(1, Reference_Count(text)) : limit;
}

// The streaming pass: one token after the other, nothing kept but these counts.
struct TCounts
{
    std::vector<qint64> namespaces; // that hold in each open element
    qint64 depth = 0;
    qint64 elements = 0;
    qint64 entities = 0;
    qint64 nesting = 0;
    qint64 declared_attributes = 0;
    qint64 attribute_pairs = 0; // those of the elements in entities come again with each reference
    qint64 pairs = 0;
    qint64 expansion = 0; // beyond the document's own length
    qint64 cost = 0;
};

// Signs of references in comments and sections, and percent signs in texts below a document type, are counted too.
qint64 Cost_Of_Text(const QString& text)
{
    const qint64 references = text.count('&') + (text.contains("<!DOCTYPE") ? text.count('%') : 0);

    return text.size() + COST_OF_REFERENCE * references;
}

qint64 Cost_Of_Element(qint64 passed, qint64 namespaces, qint64 attributes)
{
    return COST_OF_ELEMENT + passed / PASSED_AT_ONCE + COST_OF_NAMESPACE * namespaces + COST_OF_ATTRIBUTE * attributes;
}

void Count_Document_Type(const QXmlStreamReader& reader, TCounts* counts)
{
    counts->entities = reader.entityDeclarations().size();
    counts->nesting = Nesting(reader.text());
    counts->declared_attributes = Declared_Attributes(reader.text());
    counts->cost += COST_OF_DECLARATION * reader.text().count('<');
}

void Count_Start(const QXmlStreamReader& reader, TCounts* counts)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const qint64 outer = counts->namespaces.empty() ? 0 : counts->namespaces.back();
    const qint64 declared = reader.namespaceDeclarations().size();
    const qint64 namespaces = outer + declared;

    counts->namespaces.push_back(namespaces);
    ++counts->depth;
    ++counts->elements;
    counts->cost +=
        Cost_Of_Element(counts->depth + counts->declared_attributes, declared + namespaces, attributes.size());
    counts->attribute_pairs += Pairs(attributes.size());
    counts->pairs += namespaces > USUAL_NAMESPACES ? namespaces * namespaces : 0;
    counts->pairs += counts->declared_attributes > USUAL_ATTRIBUTES ? counts->declared_attributes : 0;
    for (const QXmlStreamAttribute& attribute : attributes) {
        counts->expansion += attribute.value().size();
    }
}

void Count_Token(const QXmlStreamReader& reader, TCounts* counts)
{
    counts->expansion += reader.text().size();
    switch (reader.tokenType()) {
    case QXmlStreamReader::DTD:
        Count_Document_Type(reader, counts);
        break;
    case QXmlStreamReader::StartElement:
        Count_Start(reader, counts);
        break;
    case QXmlStreamReader::EndElement:
        counts->namespaces.pop_back();
        --counts->depth;
        break;
    case QXmlStreamReader::Characters:
        counts->cost += reader.isWhitespace() ? 0 : COST_OF_TEXT;
        break;
    case QXmlStreamReader::Comment:
    case QXmlStreamReader::ProcessingInstruction:
        counts->cost += COST_OF_COMMENT;
        break;
    default:
        break;
    }
}

struct TLimit
{
    qint64 TCounts::*count;
    qint64 maximum;
    const char* reason;
};

constexpr TLimit LIMITS[] = {
    {&TCounts::depth, MAXIMUM_DEPTH, "elements nested deeper than %1 levels"},
    {&TCounts::elements, MAXIMUM_ELEMENTS, "more than %1 elements"},
    {&TCounts::entities, MAXIMUM_ENTITIES, "more than %1 entity declarations"},
    {&TCounts::nesting, MAXIMUM_DEPTH, "declarations nested deeper than %1 levels"},
    {&TCounts::attribute_pairs, MAXIMUM_PAIRS, "too many attributes"},
    {&TCounts::pairs, MAXIMUM_PAIRS, "too many namespaces or declared attributes"},
    {&TCounts::expansion, MAXIMUM_EXPANSION, "entities expand to more than 10 MB"},
    {&TCounts::cost, MAXIMUM_COST, "too many elements, attributes, texts and references"},
};

// What there is too much of; null as long as all is within the limits.
const TLimit* Excess(const TCounts& counts)
{
    const auto is_exceeded = [&](const TLimit& limit) { return counts.*limit.count > limit.maximum; };
    const TLimit* const found = std::find_if(std::begin(LIMITS), std::end(LIMITS), is_exceeded);

    return found == std::end(LIMITS) ? nullptr : found;
}

// The reader has no printable name for a character that XML cannot carry.
QString Readable_Reason(const QXmlStreamReader& reader, const QString& checked)
{
    return Xml_Is_Legal(checked) ? reader.errorString() : QString("Invalid XML character.");
}

const char NAMESPACES[] = "http://xml.org/sax/features/namespaces";

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

// Qt's parser for a document without namespaces, for which it would look all the same with up to half of its time. The
// document is told that it does so and gives local names to its nodes.
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

bool Has_Namespaces(const QString& text)
{
    // The document type may hide the others in its entities.
    return text.contains("xmlns") || text.contains("xml:") || text.contains("<!DOCTYPE");
}

bool Build_Document(const QString& text, bool namespace_processing, QDomDocument* document, TXmlFault* fault)
{
    // Under the other policies the parser crashes on characters beyond U+FFFF.
    const TXmlPolicy policy(QDomImplementation::AcceptInvalidChars);

    if (namespace_processing && !Has_Namespaces(text)) {
        return Build_Plain_Document(text, document, fault);
    }
    return document->setContent(text, namespace_processing, &fault->reason, &fault->line, &fault->column);
}

// The document parser's own words for what the check found at the end of `checked`, where it stumbles over the same
// text. It sees no more than that, so an end that comes too early says nothing, unless the whole text ends there.
bool Parser_Fault(const QString& checked, bool is_whole, bool namespace_processing, TXmlFault* fault)
{
    QDomDocument discarded;

    // A document type whose end the check has not seen may hold anything.
    if (checked.contains("<!DOCTYPE") || Build_Document(checked, namespace_processing, &discarded, fault)) {
        return false;
    }
    const TPosition end = Position_At(checked, checked.size());
    return is_whole || fault->line != end.line || fault->column < end.column;
}

bool Check(const QString& text, bool namespace_processing, TXmlFault* fault)
{
    QXmlStreamReader reader(text);
    TCounts counts;

    counts.expansion = -text.size();
    counts.cost = Cost_Of_Text(text);
    reader.setNamespaceProcessing(namespace_processing);
    // Inside the document type what expands may be declarations of attributes.
    reader.setEntityExpansionLimit(Expansion_Share(text, MAXIMUM_DECLARED_ATTRIBUTES * DECLARED_ATTRIBUTE_SIZE));
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isDTD()) {
            reader.setEntityExpansionLimit(Expansion_Share(text, MAXIMUM_EXPANSION));
        }
        Count_Token(reader, &counts);
        if (const TLimit* const limit = Excess(counts)) {
            *fault = Fault_At(Excess_Reason(limit->reason, limit->maximum), reader);
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

// The first comment, instruction or CDATA section at or behind `from`.
TMarkup Next_Section(const QString& text, int from)
{
    TMarkup markup = Next_Markup(text, from);
    while (markup.start < text.size() && !markup.is_section) {
        markup = Next_Markup(text, markup.end);
    }
    return markup;
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
    TMarkup section = Next_Section(text, 0);
    for (QRegularExpressionMatchIterator matches = REFERENCE.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const QString character = Character(match.capturedRef(1));

        while (section.end <= match.capturedStart()) {
            section = Next_Section(text, section.end);
        }
        if (!character.isEmpty() && match.capturedStart() < section.start) {
            result += text.midRef(done, match.capturedStart() - done) + character;
            done = match.capturedEnd();
        }
    }
    return result + text.midRef(done);
}

// All that a document is checked for before it is built.
bool Decode_And_Check(const QByteArray& bytes, bool namespace_processing, QString* text, TXmlFault* fault)
{
    if (bytes.size() > XML_MAXIMUM_SIZE) {
        *fault = Xml_Size_Fault();
        return false;
    }
    return Decode(bytes, text, fault) && Has_Few_Attributes(*text, fault) && Check(*text, namespace_processing, fault);
}

} // namespace

TXmlFault Xml_Size_Fault()
{
    return {"larger than 64 MB", 1, 1};
}

QString Xml_Excess(const QByteArray& bytes)
{
    // Nothing that a budget is made of takes more for each of its bytes.
    constexpr qint64 HIGHEST_COST = 40;
    QString text;
    TXmlFault fault;

    if (bytes.size() < MAXIMUM_COST / HIGHEST_COST) {
        return QString();
    }
    return Decode_And_Check(bytes, true, &text, &fault) ? QString() : fault.reason;
}

bool Xml_Parse(const QByteArray& bytes, bool namespace_processing, QDomDocument* document, TXmlFault* fault)
{
    QString text;
    return Decode_And_Check(bytes, namespace_processing, &text, fault) &&
           Build_Document(With_High_Characters(text), namespace_processing, document, fault);
}
