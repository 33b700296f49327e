// Runs a fuzz target as an ordinary test: every file of its seed corpus, then mutations of them that are the same on
// every machine.
//
//   fuzz_<target> [--mutations N] [--seed N] FOLDER...
//   fuzz_<target> FILE...                               to see a find again

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "fuzz/fuzz.h"

#if defined(__SANITIZE_ADDRESS__)
extern "C" void __sanitizer_set_death_callback(void (*callback)());
#endif

namespace {

namespace fs = std::filesystem;

std::string current, place;  // the input that is running, and where it comes from

// The input that ended the process, in a file beside it.
void keepInput() {
  const std::string file = "fuzz-find";
  std::ofstream(file, std::ios::binary) << current;
  std::fprintf(stderr, "\ninput: %s, kept as %s\n", place.c_str(), fs::absolute(file).string().c_str());
}

void onSignal(int number) {
  std::signal(number, SIG_DFL);
  keepInput();
  std::raise(number);
}

void runInput(std::string input, std::string from) {
  current = std::move(input);
  place = std::move(from);
  try {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(current.data()), current.size());
  } catch (const std::exception& e) {
    fuzz::fail("no exception leaves the target", e.what());
  }
}

std::string contentOf(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error(path.string() + " cannot be read");
  return {std::istreambuf_iterator<char>(in), {}};
}

class Mutator {
public:
  Mutator(const std::vector<std::string>& seeds, unsigned seed) : seeds_(seeds), random_(seed) {
    for (const std::string& s : seeds) collectWords(s);
  }

  std::string next() {
    std::string text = any(seeds_);
    for (std::size_t edits = 1 + upTo(4); edits > 0; --edits) edit(text);
    return text;
  }

private:
  std::size_t upTo(std::size_t n) { return static_cast<std::size_t>(random_()) % n; }
  const std::string& any(const std::vector<std::string>& list) { return list[upTo(list.size())]; }

  // Words and marks of the seeds: what a mutation puts in should look like something.
  void collectWords(const std::string& s) {
    for (std::size_t i = 0; i < s.size();) {
      std::size_t end = i + 1;
      const auto inWord = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; };
      while (inWord(s[i]) && end < s.size() && inWord(s[end])) ++end;
      words_.push_back(s.substr(i, end - i));
      i = end;
    }
  }

  void edit(std::string& text) {
    const std::size_t at = upTo(text.size() + 1);
    switch (upTo(7)) {
      case 0:
        text.erase(std::min(at, text.size()), 1 + upTo(8));
        break;
      case 1:
        text.insert(at, text.substr(at, 1 + upTo(30)));
        break;
      case 2:
        text.insert(at, words_.empty() ? "x" : any(words_));
        break;
      case 3:
        text.insert(at, 1, static_cast<char>(upTo(256)));
        break;
      case 4: {
        const std::string& other = any(seeds_);
        const std::size_t from = upTo(other.size() + 1);
        text.insert(at, other.substr(from, 1 + upTo(40)));
        break;
      }
      case 5:
        if (at < text.size()) text[at] = static_cast<char>(text[at] ^ (1 << upTo(8)));
        break;
      default:
        text.resize(at);
    }
  }

  const std::vector<std::string>& seeds_;
  std::vector<std::string> words_;
  std::mt19937 random_;
};

void addFiles(const fs::path& path, std::vector<fs::path>& files) {
  if (!fs::is_directory(path)) return files.push_back(path);
  std::vector<fs::path> found;
  for (const auto& entry : fs::directory_iterator(path))
    if (entry.is_regular_file()) found.push_back(entry.path());
  if (found.empty()) throw std::runtime_error(path.string() + " holds no seed");
  std::sort(found.begin(), found.end());
  files.insert(files.end(), found.begin(), found.end());
}

void run(const std::vector<std::string>& words) {
  unsigned mutations = 0, seed = 1;
  std::vector<fs::path> files;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool option = words[i] == "--mutations" || words[i] == "--seed";
    if (option && i + 1 == words.size()) throw std::runtime_error(words[i] + " wants a number");
    if (words[i] == "--mutations")
      mutations = static_cast<unsigned>(std::stoul(words[++i]));
    else if (words[i] == "--seed")
      seed = static_cast<unsigned>(std::stoul(words[++i]));
    else
      addFiles(words[i], files);
  }
  if (files.empty()) throw std::runtime_error("usage: [--mutations N] [--seed N] FOLDER|FILE...");
  std::vector<std::string> seeds;
  for (const fs::path& file : files) {
    seeds.push_back(contentOf(file));
    runInput(seeds.back(), file.filename().string());
  }
  Mutator mutator(seeds, seed);
  for (unsigned i = 0; i < mutations; ++i) runInput(mutator.next(), "mutation " + std::to_string(i));
  std::printf("%zu seeds, %u mutations\n", seeds.size(), mutations);
}

}  // namespace

int main(int argc, char** argv) {
  for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL}) std::signal(signal, onSignal);
#if defined(__SANITIZE_ADDRESS__)
  __sanitizer_set_death_callback(keepInput);
#endif
  try {
    run({argv + 1, argv + argc});
    return 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s: %s\n", argv[0], e.what());
    return 2;
  }
}
