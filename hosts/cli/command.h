// What the commands have in common: how they are added to the program, and what they answer.
//
// A command is a file of its own with one function, AddXCommand(app, status): it adds the command with its options, and a
// callback that runs it and leaves its answer in `status`.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <utility>

namespace orvane {

enum Status { kDone = 0, kNotRead = 1, kUsage = 2, kPartly = 3, kNotWritten = 4 };

inline constexpr const char* kStatusFooter = R"(Exit status:
  0  done
  1  the sources cannot be imported, or the archive cannot be read
  2  wrong usage
  3  done, but some geometry could not be stored, some line could not be converted, or something is wrong with the archive
  4  the output cannot be written)";

/// Adds a command whose help ends with the exit statuses; its callback gives `status` what `run` answers for the arguments.
/// Options are to be bound to `args`, which the app keeps.
template <class Args, class Run>
CLI::App& AddCommand(CLI::App& app, const char* name, const char* what, std::shared_ptr<Args> args, Status& status, Run run) {
    CLI::App& command = *app.add_subcommand(name, what);
    command.footer(kStatusFooter);
    command.callback([args = std::move(args), &status, run] { status = run(*args); });
    return command;
}

}  // namespace orvane
