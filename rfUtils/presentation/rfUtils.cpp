#include <rfUtils/presentation/rfUtils.h>

rfUtils::rfUtils() = default;
