// A command of the program: one row of the table in main.cpp, one file for each.
#ifndef TAVRIN_PROGRAM_COMMAND_H
#define TAVRIN_PROGRAM_COMMAND_H

namespace CLI
{
class App;
}

namespace Program
{

struct Command
{
    char const* name;
    char const* summary; // one line for the list of commands
    char const* help;    // what else its own help tells, with an example
    // Adds the command's options and sets what runs; that may throw Failure and UsageFailure.
    void (*setUp)(CLI::App& command);
};

extern const Command applyCommand;
extern const Command chartCommand;
extern const Command convertCommand;
extern const Command formatsCommand;
extern const Command infoCommand;
extern const Command prefsCommand;
extern const Command shaderCommand;
extern const Command templatesCommand;

} // namespace Program

#endif
