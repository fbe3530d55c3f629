#pragma once

namespace korvex::platform {

// How an opened file may be shared with other open files, in this process and in others.
enum class Sharing {
  unlocked,   // no matter who else has it open
  shared,     // others may read it too
  exclusive,  // nobody else may have it open
};

// Takes the lock for `sharing` on an open descriptor without waiting; it ends with the descriptor.
// False when another open file stands in the way. A file system without locks lets everybody in.
bool hold_file(int descriptor, Sharing sharing);

}  // namespace korvex::platform
