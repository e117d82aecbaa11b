#include "shell/app/app_state.h"

namespace quilmark {

AppState& App() {
  static AppState state;
  return state;
}

}  // namespace quilmark
