#pragma once

#include <QString>

namespace rfu {

enum class JsonContent { Catalogue, Setups, Other };

/// What a JSON file is meant to be, by the keys in it or, where they do not tell, by its name. It need not be
/// well-formed; one that does not open is Other.
JsonContent jsonContentOf(const QString& file);

}  // namespace rfu
