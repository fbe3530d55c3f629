#pragma once

namespace korvex::host {

// What becomes of texts that would be read as others than their writer meant: who only looks at the
// records is warned, who stores them is stopped.
enum class MisreadTexts { warned, refused };

}  // namespace korvex::host
