// Whether any function is waiting for a dialog, a message box or a progress window.
#pragma once

/// Lives while such a function waits. Work that must not happen meanwhile, such as destroying a
/// view, is put off until IsAny is false.
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
