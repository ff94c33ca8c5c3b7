#include "core/xmlfile.h"

#include "core/assertion.h"
#include "core/xmlparser.h"

#include <QDomImplementation>
#include <QFile>
#include <QFileInfo>
#include <QTextCodec>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {

const char FILE_PARSE_MESSAGE[] = "ERR:  Reference file XML parse error at line %1 column %2: %3";
const char DATA_PARSE_MESSAGE[] = "ERR:  Reference data XML parse error at line %1 column %2: %3";

[[noreturn]] void Throw_Access(const QString& message)
{
    throw TXmlFileException(message, TXmlFileException::File_Access);
}

[[noreturn]] void Throw_Content(const QString& message)
{
    throw TXmlFileException(message, TXmlFileException::Xml_Content);
}

[[noreturn]] void Throw_Fault(const QString& message, const TXmlFault& fault)
{
    // Meant: the parser's reason stands first, where the message speaks of the line.
    Throw_Content(message.arg(fault.reason, QString::number(fault.line), QString::number(fault.column)));
}

[[noreturn]] void Throw_Cannot_Open(const QString& name, const QString& reason)
{
    Throw_Access(QString("ERR:  Cannot open file: '%1'.  Reason: %2").arg(name, reason));
}

/// Reads as in text mode, whatever the encoding: Qt's own drops bytes, which in UTF-16 are halves of other characters.
QByteArray Without_Carriage_Returns(QByteArray bytes)
{
    if (!bytes.contains('\r')) {
        return bytes;
    }
    const QTextCodec* codec = QTextCodec::codecForUtfText(bytes, QTextCodec::codecForName("UTF-8"));
    const QByteArray unit = QTextEncoder(codec, QTextCodec::IgnoreHeader).fromUnicode(QString('\r'));
    char* kept_end = bytes.data();
    for (const char* piece = bytes.cbegin(); piece != bytes.cend();) {
        const char* next = piece + std::min<std::ptrdiff_t>(unit.size(), bytes.cend() - piece);
        kept_end = std::equal(piece, next, unit.cbegin(), unit.cend()) ? kept_end : std::copy(piece, next, kept_end);
        piece = next;
    }
    bytes.truncate(static_cast<int>(kept_end - bytes.cbegin()));
    return bytes;
}

QByteArray File_Bytes(const QString& name)
{
    const QFileInfo info(name);

    if (!info.isReadable()) {
        Throw_Access(QString("ERR:  Cannot open file '%1' for reading.").arg(name));
    }
    // Opening a pipe would wait for ever, and a device may have no end.
    if (!info.isFile()) {
        Throw_Cannot_Open(name, "not a regular file");
    }
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        Throw_Cannot_Open(name, file.errorString());
    }
    if (file.size() > XML_MAXIMUM_SIZE) {
        Throw_Fault(FILE_PARSE_MESSAGE, Xml_Size_Fault());
    }
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        Throw_Cannot_Open(name, file.errorString());
    }
    return Without_Carriage_Returns(std::move(bytes));
}

void Require_Node(const QDomNode& node, const char* message)
{
    if (node.isNull()) {
        Throw_Content(message);
    }
}

// The rest is the same for elements and nodes, but for the name that a message shows.

QDomElement Child_Element(const QDomNode& node, const QString& node_name, const QString& name, bool optional)
{
    Require_Node(node, "ERR:  Cannot get child from a NULL node");

    const QDomElement child = node.firstChildElement(name);
    if (child.isNull() && !optional) {
        Throw_Content(QString("ERR:  Node '%1' is missing from node '%2' and not optional.").arg(name, node_name));
    }
    return child;
}

QDomNode First_Child(const QDomNode& parent, const QString& parent_name, bool optional)
{
    const QDomNode child = parent.firstChild();
    if (child.isNull() && !optional) {
        Throw_Content(QString("ERR:  Parent '%1' does not have nodes and they are not optional.").arg(parent_name));
    }
    return child;
}

QString First_Text(const QDomNode& node, const QString& node_name, bool optional)
{
    Require_Node(node, "ERR:  Cannot read data from a NULL node");

    const QDomNode child = node.firstChild();
    if (child.isText()) {
        return child.nodeValue();
    }
    if (!optional) {
        Throw_Content(QString("ERR:  Node Text for '%1' is not optional.").arg(node_name));
    }
    return QString();
}

QString Missing_Attribute(const QString& name, bool optional)
{
    if (!optional) {
        Throw_Content(QString("ERR:  Node attribute '%1' missing and not optional.").arg(name));
    }
    return QString();
}

} // namespace

TXmlFile::TXmlFile()
{
    QDomImplementation::setInvalidDataPolicy(QDomImplementation::ReturnNullNode);
}

TXmlFile::~TXmlFile() = default;

// Opening

void TXmlFile::Open(const QString& identification, int* file_version, bool namespace_processing)
{
    Parse(File_Bytes(d_file_name), FILE_PARSE_MESSAGE, namespace_processing);
    Check_Root(identification, file_version);
}

void TXmlFile::Open_Data(const QByteArray& data, const QString& identification, int* file_version,
                         bool namespace_processing)
{
    Parse(data, DATA_PARSE_MESSAGE, namespace_processing);
    Check_Root(identification, file_version);
}

void TXmlFile::Parse(const QByteArray& data, const QString& message, bool namespace_processing)
{
    TXmlFault fault;

    if (!Xml_Parse(data, namespace_processing, &d_document, &fault)) {
        Throw_Fault(message, fault);
    }
    d_root_element = d_document.documentElement();
}

void TXmlFile::Check_Root(const QString& identification, int* file_version)
{
    if (d_root_element.tagName() != identification) {
        Throw_Content(
            QString("ERR:  Identification '%1' does not match '%2'").arg(identification, d_root_element.tagName()));
    }
    d_document_type = d_document.doctype().name();
    d_identification = identification;

    if (!file_version) {
        return;
    }
    if (!d_root_element.hasAttribute("File_Version")) {
        Throw_Content("ERR:  The 'File_Version' attribute is missing.");
    }
    *file_version = d_root_element.attribute("File_Version").toInt();
}

// Navigation

QDomElement TXmlFile::Get_Node(const QDomElement* node, const QString& name, bool optional) const
{
    NORVEXA_ASSERT(node);
    return Child_Element(*node, node->tagName(), name, optional);
}

QDomElement TXmlFile::Get_Node(const QDomNode* node, const QString& name, bool optional) const
{
    NORVEXA_ASSERT(node);
    return Child_Element(*node, node->nodeName(), name, optional);
}

QDomElement TXmlFile::Get_Sibling_Node(const QDomElement* current_node, const QString& name, bool optional) const
{
    NORVEXA_ASSERT(current_node);
    Require_Node(*current_node, "ERR:  Cannot get sibling from a NULL node");

    const QDomElement sibling = current_node->nextSiblingElement(name);
    if (sibling.isNull() && !optional) {
        Throw_Content(
            QString("ERR:  Node '%1' is missing from node '%2' and not optional.").arg(name, current_node->tagName()));
    }
    return sibling;
}

QDomNode TXmlFile::Get_First_Node(const QDomElement* parent, bool optional) const
{
    NORVEXA_ASSERT(parent);
    return First_Child(*parent, parent->tagName(), optional);
}

QDomNode TXmlFile::Get_First_Node(const QDomNode* parent, bool optional) const
{
    NORVEXA_ASSERT(parent);
    return First_Child(*parent, parent->localName(), optional);
}

QDomNode TXmlFile::Get_Sibling_Node(const QDomNode* current_node, bool optional) const
{
    NORVEXA_ASSERT(current_node);

    const QDomNode sibling = current_node->nextSibling();
    if (sibling.isNull() && !optional) {
        Throw_Content(QString("ERR:  Node '%1' does not have siblings and they are not optional.")
                          .arg(current_node->localName()));
    }
    return sibling;
}

// Reading

QString TXmlFile::Read_Attribute(const QDomElement* node, const QString& name, bool optional) const
{
    NORVEXA_ASSERT(node);
    Require_Node(*node, "ERR:  Cannot read attribute from a NULL node");

    return node->hasAttribute(name) ? node->attribute(name) : Missing_Attribute(name, optional);
}

QString TXmlFile::Read_Attribute(const QDomNode* node, const QString& name, bool optional) const
{
    NORVEXA_ASSERT(node);
    Require_Node(*node, "ERR:  Cannot read attribute from a NULL node");

    if (!node->hasAttributes() || !node->attributes().contains(name)) {
        return Missing_Attribute(name, optional);
    }
    return node->attributes().namedItem(name).nodeValue();
}

QString TXmlFile::Read_Text_Node(const QDomElement* node, bool optional) const
{
    NORVEXA_ASSERT(node);
    return First_Text(*node, node->tagName(), optional);
}

QString TXmlFile::Read_Text_Node(const QDomNode* node, bool optional) const
{
    NORVEXA_ASSERT(node);
    return First_Text(*node, node->localName(), optional);
}
