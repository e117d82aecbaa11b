// The columns of the list, by the numbers that sorts and settings know them by.
#pragma once

namespace quilmark {

inline constexpr int kColumnName = 1, kColumnSize = 2, kColumnModified = 3, kColumnCreated = 4,
                     kColumnOfPath = 5;

}  // namespace quilmark
