#include "gain_steps.h"

#include <QStringList>

#include <array>

namespace velmor {

namespace {

constexpr int kSteps1[] = {1, 2, 4, 8};
constexpr int kSteps2[] = {1, 2, 5, 10};
constexpr int kSteps3[] = {1, 10, 100, 1000};
constexpr int kSteps4[] = {1, 2, 5, 10, 100, 200, 500, 1000, 2000, 5000, 10000};
constexpr int kSteps5[] = {500, 1000, 2500, 5000};
constexpr int kSteps6[] = {1, 2, 5, 10, 20, 50, 100};
constexpr int kSteps7[] = {1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 5000, 10000};

constexpr std::array<std::span<const int>, kGainTypeCount> kStepsByType = {
    std::span<const int>{}, kSteps1, kSteps2, kSteps3, kSteps4, kSteps5, kSteps6, kSteps7,
};

}  // namespace

std::span<const int> gainSteps(int gainType)
{
    if (gainType < 0 || gainType >= kGainTypeCount)
        return {};
    return kStepsByType[static_cast<size_t>(gainType)];
}

QString gainStepsText(int gainType)
{
    QStringList steps;
    for (int step : gainSteps(gainType))
        steps << QString::number(step);
    return steps.join(u',');
}

}  // namespace velmor
