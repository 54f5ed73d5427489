// Whether some function is still waiting for a dialog, a box or a progress window.
#pragma once

/// Lives while such a function runs. What must not happen beneath its feet waits until none does.
class CModalLoop {
  public:
    CModalLoop() { ++s_count; }
    ~CModalLoop() { --s_count; }
    CModalLoop(const CModalLoop&) = delete;
    CModalLoop& operator=(const CModalLoop&) = delete;
    [[nodiscard]] static bool IsAny() { return s_count > 0; }

  private:
    static inline int s_count = 0;
};
