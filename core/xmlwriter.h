#pragma once

#include <QByteArray>
#include <QDomDocument>

/// The bytes of `document` as QDomNode::save() writes them, with `indentation` blanks per level. A document of
/// elements, attributes and texts below the declaration XML_DECLARATION, which is what budgets are made of, takes a
/// fraction of Qt's time; any other one is left to Qt. The texts must be ones that XML can carry.
QByteArray Xml_Bytes(const QDomDocument& document, int indentation);

/// The data of the processing instruction that a document in UTF-8 begins with.
constexpr char XML_DECLARATION[] = R"(version="1.0" encoding="utf-8")";
