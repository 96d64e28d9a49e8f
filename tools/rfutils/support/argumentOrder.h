#pragma once

#include <QStringList>

/// The arguments with everything that is no option behind "--", so that negative values need no
/// "--" of the user's: a minus sign followed by a digit, a point or "inf" starts a value. The value
/// of an option stays with its option, whatever it looks like.
/// @param optionsWithValue names of the options that take a value, without their dashes
QStringList optionsFirst(const QStringList& arguments, const QStringList& optionsWithValue);
