// Error types for hosts of the framework. Declared for their use only: nothing here throws them.
#pragma once

#include <stdexcept>
#include <string>

namespace Velmora {

/// A message that cannot be encoded or decoded.
class VelmoraEncodingError : public std::logic_error {
  public:
    explicit VelmoraEncodingError(const std::string& text) : std::logic_error(text) {}
};

/// A value outside its enumeration.
class InvalidEnumException : public VelmoraEncodingError {
  public:
    using VelmoraEncodingError::VelmoraEncodingError;
};

} // namespace Velmora
