#pragma once

#include "OrvExport.h"

#include <string_view>

/// What a host derives to be told in words why an operation of orv::xml::File returned no value or false. Handlers are
/// not owned and may be null. A message is a phrase without a full stop, in English, that lives for the length of the
/// call.
namespace orv::xml::errorhandler {

/// Is told why create or parse refused to begin.
class ORV_XML_EXPORT ExceptionInterface {
public:
    virtual ~ExceptionInterface() = default;

    /// Takes the reason.
    virtual void report(std::string_view message) = 0;
};

/// Is told why a text is no document.
class ORV_XML_EXPORT ParseInterface {
public:
    virtual ~ParseInterface() = default;

    /// Takes the reason.
    virtual void report(std::string_view message) = 0;
};

/// Is told why a document couldn't be saved.
class ORV_XML_EXPORT WriteInterface {
public:
    virtual ~WriteInterface() = default;

    /// Takes the reason.
    virtual void report(std::string_view message) = 0;
};

} // namespace orv::xml::errorhandler
