#pragma once

#include <support/allocations.h>

#include <QJSValue>
#include <QObject>

/// Counts how often memory is allocated by operator new.
class AllocationCounter : public QObject {
    Q_OBJECT

public:
    /// During a call of a function.
    Q_INVOKABLE double during(QJSValue function) const {
        const Allocations allocations;
        function.call();
        return static_cast<double>(allocations.count());
    }
};
