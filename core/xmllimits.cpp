#include "core/xmllimits.h"

#include "core/xmlmarkup.h"

#include <algorithm>
#include <iterator>

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
// lets pass two million elements without content, and a budget of 40,000 items with a replacement and an identifier
// each.
constexpr qint64 MAXIMUM_COST = 130'000'000;
constexpr qint64 COST_OF_ELEMENT = 36;
constexpr qint64 COST_OF_NAMESPACE = 14; // once where it is declared and once for each element that it holds in
constexpr qint64 COST_OF_ATTRIBUTE = 80;
constexpr qint64 COST_OF_TEXT = 50; // between tags; blanks alone make no node. Most texts go on into a record.
constexpr qint64 COST_OF_COMMENT = 28;
constexpr qint64 COST_OF_DECLARATION = 28;
constexpr qint64 COST_OF_DECLARING = 2; // for each character of a document type, beside its own
constexpr qint64 COST_OF_REFERENCE = 35;
// What entities expand to may be references, in which nobody sees them: one for every three characters.
constexpr qint64 COST_OF_ENTITIES = 14LL * (MAXIMUM_EXPANSION / 3);
// At each element the levels above it are passed, and at it and at each of its attributes those that the document type
// declares; so many of them in the time of one character.
constexpr qint64 PASSED_AT_ONCE = 4;
// Names and addresses of namespaces are compared with each other. So many characters make a namespace count once more.
constexpr qint64 USUAL_LENGTH_OF_NAMESPACE = 64;
// An attribute that is declared takes no less: " a ID ''".
constexpr int DECLARED_ATTRIBUTE_SIZE = 8;

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

bool Has_Entities(const QString& text)
{
    return Xml_Has_Document_Type(text) && text.contains(QLatin1String("<!ENTITY"));
}

qint64 Pairs(qint64 attributes)
{
    return attributes > USUAL_ATTRIBUTES ? attributes * attributes : 0;
}

// Where the elements first have too many attributes for the comparisons; -1 if they never do.
int Find_Excess_In_Elements(const QString& text)
{
    const bool has_entities = Has_Entities(text);
    const auto next_markup = has_entities ? Xml_Next_Rough_Markup : Xml_Next_Markup;

    // Nearly all files have so few that even one element with all of them would not have too many.
    if (Pairs(text.count('=') + (has_entities ? text.count("&#") : 0)) <= MAXIMUM_PAIRS) {
        return -1;
    }
    qint64 pairs = 0;
    for (TXmlMarkup markup = next_markup(text, 0); markup.start < text.size();) {
        const TXmlMarkup next = next_markup(text, markup.end);

        pairs += Pairs(markup.attributes);
        if (pairs > MAXIMUM_PAIRS) {
            return next.start;
        }
        markup = next;
    }
    return -1;
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
    return Has_Entities(text) ? limit / qMax(1, Reference_Count(text)) : limit;
}

// Signs of references in comments and sections, and percent signs in texts below a document type, are counted too.
qint64 Cost_Of_Text(const QString& text)
{
    const qint64 references = text.count('&') + (Xml_Has_Document_Type(text) ? text.count('%') : 0);

    return text.size() + COST_OF_REFERENCE * references + (Has_Entities(text) ? COST_OF_ENTITIES : 0);
}

qint64 Weight(const QXmlStreamNamespaceDeclarations& declarations)
{
    qint64 weight = declarations.size();
    for (const QXmlStreamNamespaceDeclaration& declaration : declarations) {
        weight += (declaration.prefix().size() + declaration.namespaceUri().size()) / USUAL_LENGTH_OF_NAMESPACE;
    }
    return weight;
}

qint64 Cost_Of_Element(qint64 passed, qint64 namespaces, qint64 attributes)
{
    return COST_OF_ELEMENT + passed / PASSED_AT_ONCE + COST_OF_NAMESPACE * namespaces + COST_OF_ATTRIBUTE * attributes;
}

void Count_Document_Type(const QXmlStreamReader& reader, TXmlCounts* counts)
{
    counts->is_plain = false;
    counts->entities = reader.entityDeclarations().size();
    counts->nesting = Nesting(reader.text());
    counts->declared_attributes = Declared_Attributes(reader.text());
    counts->cost += COST_OF_DECLARATION * reader.text().count('<') + COST_OF_DECLARING * reader.text().size();
}

void Count_Start(const QXmlStreamReader& reader, TXmlCounts* counts)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const qint64 outer = counts->namespaces.empty() ? 0 : counts->namespaces.back();
    const qint64 declared = Weight(reader.namespaceDeclarations());
    const qint64 namespaces = outer + declared;

    counts->namespaces.push_back(namespaces);
    ++counts->depth;
    ++counts->elements;
    const qint64 passed = counts->depth + counts->declared_attributes * (1 + attributes.size());
    counts->cost += Cost_Of_Element(passed, declared + namespaces, attributes.size());
    counts->attribute_pairs += Pairs(attributes.size());
    counts->pairs += namespaces > USUAL_NAMESPACES ? namespaces * namespaces : 0;
    counts->pairs += counts->declared_attributes > USUAL_ATTRIBUTES ? counts->declared_attributes : 0;
    counts->is_plain = counts->is_plain && namespaces == 0 && reader.prefix().isEmpty();
    for (const QXmlStreamAttribute& attribute : attributes) {
        counts->expansion += attribute.value().size();
        counts->is_plain = counts->is_plain && attribute.prefix().isEmpty();
    }
}

void Count_Token(const QXmlStreamReader& reader, TXmlCounts* counts)
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
    qint64 TXmlCounts::*count;
    qint64 maximum;
    const char* reason;
};

constexpr TLimit LIMITS[] = {
    {&TXmlCounts::depth, MAXIMUM_DEPTH, "elements nested deeper than %1 levels"},
    {&TXmlCounts::elements, MAXIMUM_ELEMENTS, "more than %1 elements"},
    {&TXmlCounts::entities, MAXIMUM_ENTITIES, "more than %1 entity declarations"},
    {&TXmlCounts::nesting, MAXIMUM_DEPTH, "declarations nested deeper than %1 levels"},
    {&TXmlCounts::attribute_pairs, MAXIMUM_PAIRS, "too many attributes"},
    {&TXmlCounts::pairs, MAXIMUM_PAIRS, "too many namespaces or declared attributes"},
    {&TXmlCounts::expansion, MAXIMUM_EXPANSION, "entities expand to more than 10 MB"},
    {&TXmlCounts::cost, MAXIMUM_COST, "too many elements, attributes, texts and references"},
};

// What there is too much of; null as long as all is within the limits.
const TLimit* Excess(const TXmlCounts& counts)
{
    const auto is_exceeded = [&](const TLimit& limit) { return counts.*limit.count > limit.maximum; };
    const TLimit* const found = std::find_if(std::begin(LIMITS), std::end(LIMITS), is_exceeded);

    return found == std::end(LIMITS) ? nullptr : found;
}

} // namespace

int Xml_Find_Excess_Of_Attributes(const QString& text)
{
    const int declared = Xml_Has_Document_Type(text) ? Declared_Attributes(QStringRef(&text)) : 0;

    return declared > MAXIMUM_DECLARED_ATTRIBUTES ? 0 : Find_Excess_In_Elements(text);
}

bool Xml_Is_Surely_Small(const QByteArray& bytes)
{
    // That of an element without content, and half of that of one with a text and an end.
    constexpr qint64 COST_OF_TAG = 50;
    const qint64 tags = bytes.count('<');
    const qint64 references = bytes.count('&');

    return tags <= MAXIMUM_ELEMENTS &&
           bytes.size() + COST_OF_TAG * tags + COST_OF_REFERENCE * references <= MAXIMUM_COST;
}

TXmlLimits::TXmlLimits(const QString& text)
    // Inside the document type what expands may be declarations of attributes.
    : d_declaration_share(Expansion_Share(text, MAXIMUM_DECLARED_ATTRIBUTES * DECLARED_ATTRIBUTE_SIZE)),
      d_content_share(Expansion_Share(text, MAXIMUM_EXPANSION))
{
    d_counts.expansion = -text.size();
    d_counts.cost = Cost_Of_Text(text);
}

void TXmlLimits::Bound_Expansion(QXmlStreamReader* reader) const
{
    if (reader->tokenType() == QXmlStreamReader::NoToken) {
        reader->setEntityExpansionLimit(d_declaration_share);
    } else if (reader->isDTD()) {
        reader->setEntityExpansionLimit(d_content_share);
    }
}

QString TXmlLimits::Count(const QXmlStreamReader& reader)
{
    Count_Token(reader, &d_counts);
    const TLimit* const limit = Excess(d_counts);

    return limit ? QString(limit->reason).replace("%1", QString::number(limit->maximum)) : QString();
}

bool TXmlLimits::Is_Plain() const
{
    return d_counts.is_plain;
}
