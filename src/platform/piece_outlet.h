#pragma once

namespace korvex::platform {

// Who takes the pieces that threads make.
enum class PieceTaker {
  maker,   // the thread that has made it
  caller,  // the thread that has them made: the only one that a signal gets out of a call that
           // waits
};

// Where who makes something long in pieces puts each of them.
template <typename Piece>
class PieceOutlet {
 public:
  virtual ~PieceOutlet() = default;

  // A piece to fill, as it was when it was handed over some time before. Null when no more are
  // taken; else it waits for one.
  virtual Piece* room() = 0;

  // Hands it over. `ends_chunk`: what follows is of another chunk.
  virtual void hand_over(bool ends_chunk) = 0;
};

}  // namespace korvex::platform
