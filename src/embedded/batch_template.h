#pragma once
// BatchTemplate: recognises a batch text that differs from an earlier one in its literals only, without lexing it.
//
// A bulk writer sends the same text again and again with other values in it. The fixed pieces between the literals are
// compared byte by byte, the literals are read where they are expected; anything unexpected is no match, and the lexer
// decides.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/token.h"

namespace embedded {

struct ParsedBatch;

class BatchTemplate {
public:
  // tokens: of the batch that `batch` was parsed from.
  BatchTemplate(tsql::TokenStream tokens, std::shared_ptr<ParsedBatch> batch);

  // Only literals that are texts without a line break, whole numbers of 32 bits, or decimals with at most nine digits
  // in front of the point can vary.
  bool usable() const { return usable_; }
  // True when the text has this form: its literals are then the ones of tokens().
  bool match(std::string_view text);
  const tsql::TokenStream& tokens() const { return tokens_; }
  ParsedBatch& batch() const { return *batch_; }

  // While a batch of this form runs, its literals stand in tokens(): no other text may match.
  class Use {
  public:
    explicit Use(BatchTemplate& t) : t_(t) { t_.inUse_ = true; }
    ~Use() { t_.inUse_ = false; }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

  private:
    BatchTemplate& t_;
  };

private:
  struct Hole {
    std::string before;  // fixed text in front of the literal
    tsql::TokenKind kind;
    int ordinal;
    int scale;  // of a decimal
  };
  bool read(const Hole& hole, std::string_view text, std::size_t& at);

  tsql::TokenStream tokens_;
  std::shared_ptr<ParsedBatch> batch_;
  std::vector<Hole> holes_;
  std::string after_;
  std::vector<tsql::LiteralValue> found_;  // by ordinal: changes places with the tokens' literals when a text matches
  bool usable_ = true, inUse_ = false;
};

}  // namespace embedded
