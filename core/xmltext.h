#pragma once

#include <QString>

/// Which texts an XML 1.0 document can carry, and which of them come back.

/// Whether every character of `text` is one that XML can carry. Characters beyond U+FFFF are; control characters other
/// than tab, line feed and carriage return, lone surrogates, U+FFFE and U+FFFF are not.
bool Xml_Is_Legal(const QString& text);

/// `text` without the characters that XML cannot carry.
QString Xml_Clean(const QString& text);

/// Whether `text` is empty or holds nothing but white space, no-break spaces included. The reader drops such a text, so
/// a file that needs it would not load.
bool Xml_Is_Blank(const QString& text);
