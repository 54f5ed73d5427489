#include "store/engine/HistorySteps.h"

#include <algorithm>
#include <iterator>

#include "store/engine/StorageState.h"

CHistorySteps::CHistorySteps(CStorageState& state) : m_state(state), m_tables(state.file) {}

EPlatformError CHistorySteps::Load() {
    EPlatformError error = m_state.CheckReadable();
    if (m_isLoaded || error != kErrorSuccess) {
        return error;
    }
    error = m_tables.Find();
    if (error == kErrorSuccess && m_tables.Exist()) {
        error = m_tables.ReadSteps(m_steps);
    }
    if (error != kErrorSuccess) {
        Forget();
        return error;
    }
    m_isLoaded = true;
    m_lastId = m_steps.empty() ? 0 : m_steps.back().id;
    std::ranges::copy_if(m_steps, std::back_inserter(m_dropped), &CHistoryStep::isDropped);
    std::erase_if(m_steps, [](const CHistoryStep& step) { return step.isDropped; });
    return kErrorSuccess;
}

void CHistorySteps::Forget() {
    m_tables.Release();
    m_isLoaded = false;
    m_steps.clear();
    m_dropped.clear();
}

void CHistorySteps::StartAgain() {
    Forget();
    m_isLoaded = true;
    m_lastId = 0;
}

EPlatformError CHistorySteps::Create() {
    return m_tables.Exist() ? kErrorSuccess : m_tables.Create();
}

std::optional<CHistoryStep> CHistorySteps::Next(bool isUndone, std::optional<qint64> scope) const {
    std::optional<CHistoryStep> next;
    for (const CHistoryStep& step : m_steps) {
        const bool isWanted = step.isUndone == isUndone && (!scope || step.scope == *scope);
        if (isWanted && !(isUndone && next)) {
            next = step;
        }
    }
    return next;
}

EPlatformError CHistorySteps::Store(const CHistoryStep& step, const CHistoryLimits& limits) {
    const auto stored = std::ranges::find(m_steps, step.id, &CHistoryStep::id);
    if (stored == m_steps.end()) {
        m_steps.push_back(step);
    } else {
        *stored = step;
    }
    const EPlatformError error = m_tables.WriteStep(step);
    return error == kErrorSuccess && !step.isProvisional ? Trim(step, limits) : error;
}

EPlatformError CHistorySteps::Drop(const CHistoryStep& step) {
    CHistoryStep& dropped = m_dropped.emplace_back(step);
    dropped.isDropped = true;
    std::erase_if(m_steps, [&](const CHistoryStep& each) { return each.id == dropped.id; });
    return m_tables.WriteStep(dropped);
}

bool CHistorySteps::IsUntidy(const CHistoryLimits& limits) const {
    constexpr int kMost = 16;
    constexpr int kShare = 4;
    qint64 bytes = 0;
    for (const CHistoryStep& step : m_dropped) {
        bytes += step.bytes;
    }
    return m_dropped.size() >= kMost || bytes > limits.bytes / kShare;
}

EPlatformError CHistorySteps::Tidy(qint64 most) {
    EPlatformError error = kErrorSuccess;
    while (error == kErrorSuccess && most > 0 && !m_dropped.empty()) {
        CHistoryStep& step = m_dropped.back();
        if (step.changes > most) {
            error = m_tables.RemoveSome(step.id, most);
            step.changes -= most;
            if (error == kErrorSuccess) {
                error = m_tables.WriteStep(step);
            }
            break;
        }
        most -= step.changes;
        error = m_tables.RemoveStep(step.id);
        m_dropped.pop_back();
    }
    return error;
}

// When all other steps that can be undone are gone, those go that would be redone last.
EPlatformError CHistorySteps::Trim(const CHistoryStep& kept, const CHistoryLimits& limits) {
    EPlatformError error = kErrorSuccess;
    while (error == kErrorSuccess) {
        int count = 0;
        qint64 bytes = 0;
        const CHistoryStep* oldest = nullptr;
        const CHistoryStep* newest = nullptr;
        for (const CHistoryStep& step : m_steps) {
            if (step.scope != kept.scope) {
                continue;
            }
            ++count;
            bytes += step.bytes;
            if (step.id != kept.id) {
                oldest = oldest == nullptr && !step.isUndone ? &step : oldest;
                newest = &step;
            }
        }
        const bool isFull = count > limits.steps || bytes > limits.bytes;
        if (!isFull || newest == nullptr) {
            break;
        }
        error = Drop(oldest != nullptr ? *oldest : *newest);
    }
    return error;
}
