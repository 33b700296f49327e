#pragma once
// What differs between operating systems: terminals, signals, the program's words.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace cli {

void prepareTerminal();  // UTF-8 output; a reader that goes away is a failed write, not the end of the program
bool inputIsTerminal();
bool outputIsTerminal();
bool errorIsTerminal();
bool outputIsFile();        // and neither a terminal nor another program
std::size_t outputWidth();  // columns of the terminal behind standard output, 0 when there is none
std::size_t errorWidth();   // columns of the terminal behind standard error, 80 when unknown
std::size_t errorHeight();  // its lines, 24 when unknown
// Whether the terminal behind standard error moves its cursor and takes colours as it is told (ECMA-48). NO_COLOR in
// the environment switches the colours off.
bool errorTakesEscapes();
bool errorTakesColours();
// A line from the terminal that is not shown as it is typed; the question goes to standard error. Nullopt at the end of
// the input. Standard input has to be a terminal.
std::optional<std::string> askSecret(const std::string& question);
// The arguments without the program's name, in UTF-8.
std::vector<std::string> programWords(int argc, char** argv);

}  // namespace cli
