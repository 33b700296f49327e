#pragma once
// What differs between operating systems: terminals, signals, the program's words.

#include <cstddef>
#include <string>
#include <vector>

namespace cli {

void prepareTerminal();  // UTF-8 output; a reader that goes away is a failed write, not the end of the program
bool inputIsTerminal();
bool errorIsTerminal();
std::size_t errorWidth();  // columns of the terminal behind standard error, 80 when unknown
// The arguments without the program's name, in UTF-8.
std::vector<std::string> programWords(int argc, char** argv);

}  // namespace cli
