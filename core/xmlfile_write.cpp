#include "core/xmlfile.h"

#include "core/assertion.h"
#include "core/filewriter.h"
#include "core/number.h"
#include "core/xmlparser.h"
#include "core/xmlpolicy.h"
#include "core/xmltext.h"
#include "core/xmlwriter.h"

#include <QFileInfo>

#include <algorithm>

namespace {

constexpr int INDENTATION = 4;

[[noreturn]] void Throw_Content(const QString& message)
{
    throw TXmlFileException(message, TXmlFileException::Xml_Content);
}

[[noreturn]] void Throw_Unwritable(const QString& name, const QString& data)
{
    Throw_Content(QString("ERR:  Cannot write node '%1' with data '%2'").arg(name, data));
}

[[noreturn]] void Throw_Unwritten(const QString& file_name, const QString& reason)
{
    Throw_Content(QString("ERR:  Cannot write file '%1'.  Reason: %2").arg(file_name, reason));
}

bool Is_Legal_Name(const QString& name)
{
    const TXmlPolicy policy(QDomImplementation::ReturnNullNode);
    return !QDomDocument().createAttribute(name).isNull();
}

QByteArray Without_Line_Breaks(QByteArray bytes)
{
    const auto is_line_break = [](char byte) { return byte == '\r' || byte == '\n'; };

    bytes.truncate(static_cast<int>(std::remove_if(bytes.begin(), bytes.end(), is_line_break) - bytes.begin()));
    return bytes;
}

} // namespace

QDomElement TXmlFile::Create_Node(QDomElement* parent, const QString& name)
{
    NORVEXA_ASSERT(parent);

    if (parent->isNull()) {
        Throw_Content("ERR:  Cannot create node from a NULL node");
    }
    if (name.isEmpty()) {
        Throw_Content("ERR:  Cannot create an unnamed node");
    }
    QDomElement node = New_Element(name);
    parent->appendChild(node);
    return node;
}

// Qt looks closely at each character of a name. Once is enough for those that come again and again.
QDomElement TXmlFile::New_Element(const QString& name)
{
    if (d_legal_names.contains(name)) {
        const TXmlPolicy policy(QDomImplementation::AcceptInvalidChars);
        return d_document.createElement(name);
    }
    const QDomElement node = d_document.createElement(name);
    if (node.tagName() == name) {
        d_legal_names.insert(name);
    }
    return node;
}

void TXmlFile::Write_Text_Node(QDomElement* node, const QString& text)
{
    NORVEXA_ASSERT(node);

    if (node->isNull()) {
        Throw_Content("ERR:  Cannot append data to a NULL node");
    }
    if (!Xml_Is_Legal(text)) {
        Throw_Unwritable(node->tagName(), text);
    }
    // The policy of the constructor would refuse legal characters beyond U+FFFF.
    const TXmlPolicy policy(QDomImplementation::AcceptInvalidChars);
    node->appendChild(d_document.createTextNode(text));
}

void TXmlFile::Write_Text_Node(QDomElement* node, const double& value, int precision)
{
    Write_Text_Node(node, Fixed_Text(value, precision));
}

void TXmlFile::Write_Text_Node(QDomElement* node, int value)
{
    Write_Text_Node(node, QString::number(value));
}

void TXmlFile::Write_Attribute(QDomElement* node, const QString& name, const QString& value)
{
    NORVEXA_ASSERT(node);

    if (name.isEmpty()) {
        Throw_Content("ERR:  Cannot create an unnamed attribute");
    }
    // Qt would write them as they are, and nobody could read the file.
    if (!Is_Legal_Name(name) || !Xml_Is_Legal(value)) {
        Throw_Unwritable(name, value);
    }
    node->setAttribute(name, value);
}

void TXmlFile::Write_Attribute(QDomElement* node, const QString& name, const double& value, int precision)
{
    Write_Attribute(node, name, Fixed_Text(value, precision));
}

void TXmlFile::Write_Attribute(QDomElement* node, const QString& name, int value)
{
    Write_Attribute(node, name, QString::number(value));
}

void TXmlFile::Clear()
{
    d_document.clear();
}

void TXmlFile::Reset(const QString& identification, int file_version)
{
    Clear();
    d_document.appendChild(d_document.createProcessingInstruction("xml", XML_DECLARATION));
    Append_Root(identification, file_version);
}

void TXmlFile::Reset(const QString& doctype, const QString& identification, int file_version)
{
    d_document = QDomDocument(doctype);
    Append_Root(identification, file_version);
}

void TXmlFile::Append_Root(const QString& identification, int file_version)
{
    d_root_element = d_document.createElement(identification);
    d_root_element.setAttribute("File_Version", file_version);
    d_document.appendChild(d_root_element);
}

QByteArray TXmlFile::Document_Bytes(bool compact) const
{
    return compact ? Without_Line_Breaks(Xml_Bytes(d_document, 0)) : Xml_Bytes(d_document, INDENTATION);
}

void TXmlFile::Write_File(bool compact)
{
    const QFileInfo info(d_file_name);
    QString reason;

    if (info.exists() && !info.isWritable()) {
        throw TXmlFileException(QString("ERR:  Cannot open file '%1' for writing").arg(d_file_name),
                                TXmlFileException::File_Access);
    }
    const QByteArray bytes = Document_Bytes(compact);
    const QString excess = Xml_Excess(bytes);
    if (!excess.isEmpty()) {
        Throw_Unwritten(d_file_name, "it could not be opened again: " + excess);
    }
    if (Write_Whole_File(d_file_name, bytes, &reason) != TFileWrite::Done) {
        Throw_Unwritten(d_file_name, reason);
    }
}

void TXmlFile::Write_Data(QByteArray* data, bool compact)
{
    NORVEXA_ASSERT(data);
    *data = Document_Bytes(compact);
}
