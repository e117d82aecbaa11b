// Where the system says that the user's documents are. Windows alone.
#pragma once

#ifdef _WIN32

#include <string>
#include <string_view>

namespace quilmark {

// Moves them, in the registry, and puts the former place back at its end. Throws where that fails.
class DocumentsAt {
 public:
  explicit DocumentsAt(std::u16string_view path);
  ~DocumentsAt();
  DocumentsAt(const DocumentsAt&) = delete;
  DocumentsAt& operator=(const DocumentsAt&) = delete;

  void Move(std::u16string_view path);

 private:
  std::wstring former_;
};

}  // namespace quilmark

#endif
