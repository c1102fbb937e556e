#include "app/window/bridge/UpdateState.h"

#include "app/OrvalenApp.h"
#include "app/UpdateCheck.h"
#include "app/state/BuildConfiguration.h"
#include "app/window/bridge/QtText.h"

namespace orvalen {

UpdateState::UpdateState(ContentView& view, ChangeNotifier& notifier) : StateProperties(view, notifier) {
    follow(view.showUpdateAlert, view.remoteInfo);
}

QString UpdateState::footer() const {
    const Bundle& bundle = view().platform.bundle;
    return "Created by " + toQString(configuration::siteName) + " v" +
           toQString(infoString(bundle, "CFBundleShortVersionString")) + " (Build " +
           toQString(infoString(bundle, "CFBundleVersion")) + ")";
}

QString UpdateState::notes() const {
    const auto& info = view().remoteInfo.get();
    return info && info->notes ? toQString(*info->notes) : "A new version is available.";
}

void UpdateState::download() {
    if (const auto& info = view().remoteInfo.get())
        openDownloadPage(view().platform, *info);
    dismiss();
}

} // namespace orvalen
