#pragma once

#include <QStringList>

namespace rfu::command {

/// The arguments with everything that is no option behind "--", so that negative values need no
/// "--" of the user's: a minus sign starts an option where a letter or a second minus sign follows,
/// "-inf" excepted, and else a value. The value of an option stays with its option, whatever it looks like.
/// @param optionsWithValue names of the options that take a value, without their dashes
QStringList optionsFirst(const QStringList& arguments, const QStringList& optionsWithValue);

}  // namespace rfu::command
