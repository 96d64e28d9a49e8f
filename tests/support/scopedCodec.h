#pragma once

#include <QTextCodec>

/// Sets the process's text codec during its lifetime.
class ScopedCodec {
public:
    explicit ScopedCodec(const char* name) : previous_(QTextCodec::codecForLocale()) {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(name));
    }
    ~ScopedCodec() { QTextCodec::setCodecForLocale(previous_); }
    ScopedCodec(const ScopedCodec&) = delete;
    ScopedCodec& operator=(const ScopedCodec&) = delete;

private:
    QTextCodec* previous_;
};
