#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QString>

/// The largest document in bytes that is read.
constexpr int XML_MAXIMUM_SIZE = 64 * 1024 * 1024;

/// Why a document cannot be read, and where.
struct TXmlFault
{
    QString reason;
    int line = 1;
    int column = 1;
};

/// Parses `bytes` into `document` and returns true; on failure fills `fault` and returns false. Any bytes are safe:
/// before the document is built they are checked for being well-formed and for staying within limits (64 MB, 256 nested
/// elements, 2 million elements, 64 entity declarations, 10 MB of entity expansion, attributes and namespaces that are
/// quick to compare, and a weighted sum of all that takes time and memory), and nothing outside of them is ever read.
bool Xml_Parse(const QByteArray& bytes, bool namespace_processing, QDomDocument* document, TXmlFault* fault);

/// The fault of a document above XML_MAXIMUM_SIZE, for who knows the size before the bytes.
TXmlFault Xml_Size_Fault();

/// Why Xml_Parse would refuse the bytes of a budget; empty if it would not.
QString Xml_Excess(const QByteArray& bytes);
