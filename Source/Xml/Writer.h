#pragma once

#include "Xml/Document.h"
#include "Xml/MarkupWriter.h"

#include <string_view>

namespace orv::xml {

/// Writes the whole document.
void writeDocument(const Document& document, MarkupWriter& out);

} // namespace orv::xml
