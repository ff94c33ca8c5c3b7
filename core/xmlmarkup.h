#pragma once

#include <QString>

/// What begins with a "<": a tag, a declaration, or a section. Found by its signs alone, in any text.
struct TXmlMarkup
{
    int start;               ///< the end of the text if there is none
    int end;                 ///< behind it, or where the next one begins
    bool is_section = false; ///< a comment, an instruction or a CDATA section, which holds no markup and no references
    qint64 attributes = 0;   ///< at most
};

/// The first markup at or behind `from`.
TXmlMarkup Xml_Next_Markup(const QString& text, int from);

/// The same where entities are declared. The quotes around their texts may hold tags, in which references may stand for
/// equals signs.
TXmlMarkup Xml_Next_Rough_Markup(const QString& text, int from);

/// The first section at or behind `from`.
TXmlMarkup Xml_Next_Section(const QString& text, int from);

/// Whether `text` has a document type, which stands in front of the elements.
bool Xml_Has_Document_Type(const QString& text);
