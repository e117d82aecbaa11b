// The program's value under the user's Run key, by which former versions started with the log-on.
#pragma once

#include <cstdint>

namespace quilmark {

// Whether it is a text that is not empty.
[[nodiscard]] bool HasRunKeyValue();

// Deletes it. The error code of Windows; 0 also where there is none.
[[nodiscard]] uint32_t DeleteRunKeyValue();

}  // namespace quilmark
