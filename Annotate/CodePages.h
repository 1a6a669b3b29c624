#pragma once

namespace annotate {

/// The character that a byte of 0xa0 or above stands for in a part of ISO 8859: page 'A' is ISO 8859-1, 'I' is
/// ISO 8859-9. U+FFFD if the part leaves the byte free.
char32_t characterOfPage(char page, unsigned char byte);

} // namespace annotate
