// Whether the desktop asks for high contrast: when it is asked.
#include "ContrastSetting.h"

#include <QGuiApplication>
#include <utility>

namespace vk32 {

ContrastSetting::ContrastSetting(std::function<void(bool high)> told) : told_(std::move(told)) {
  QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &context_, [this](Qt::ApplicationState state) {
    if (state == Qt::ApplicationActive) Ask();
  });
}

}  // namespace vk32
