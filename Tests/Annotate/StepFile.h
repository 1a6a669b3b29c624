#pragma once

#include <string>

namespace annotate {

/// What stands before and after the instances of a model.
inline const std::string header =
    "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_SCHEMA(('IFC4'));\nENDSEC;\nDATA;\n";
inline const std::string footer = "\nENDSEC;\nEND-ISO-10303-21;\n";

} // namespace annotate
