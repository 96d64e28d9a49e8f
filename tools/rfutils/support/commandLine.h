#pragma once

#include <QString>
#include <QStringList>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "support/kinds.h"
#include "support/subcommand.h"

namespace rfu::command {

/// The options and arguments of a run, by their names. Options may stand anywhere; a value follows
/// its option or "=". A minus sign starts an option only if a letter or a second minus sign follows
/// (except in "-inf"), so that negative values need no "--".
class CommandLine {
public:
    /// Reads no values if --help is among the options.
    /// @throw Failure for options and arguments that are unknown, missing or wrong
    CommandLine(const Subcommand& subcommand, const QStringList& arguments);

    bool isSet(std::string_view name) const { return texts_.count(name) > 0; }
    /// As typed.
    QStringList texts(std::string_view name) const;
    /// The last one as typed, empty if there is none.
    QString text(std::string_view name) const { return texts(name).value(texts(name).size() - 1); }

    template <typename T>
    std::vector<T> values(std::string_view name) const {
        std::vector<T> result;
        const auto found = values_.find(name);
        if (found != values_.end()) {
            for (const Value& value : found->second) {
                result.push_back(std::get<T>(value));
            }
        }
        return result;
    }
    /// Nothing if the option is not given and has no fallback.
    template <typename T>
    std::optional<T> find(std::string_view name) const {
        const std::vector<T> all = values<T>(name);
        return all.empty() ? std::nullopt : std::optional<T>(all.back());
    }
    /// For options and arguments that are required or have a fallback.
    template <typename T>
    T value(std::string_view name) const {
        return values<T>(name).back();
    }
    Format format() const { return value<Format>("format"); }

private:
    /// @return the arguments
    QStringList takeOptions(const Subcommand& subcommand, const QStringList& arguments);
    void takeArguments(const Subcommand& subcommand, const QStringList& arguments);
    void completeOptions(const Subcommand& subcommand);

    std::map<std::string_view, QStringList> texts_;
    std::map<std::string_view, std::vector<Value>> values_;
};

}  // namespace rfu::command
