#include "support/logging_container.h"

#include "hosting/hosted_control.h"

namespace support {

namespace {

constexpr SIZE Size(const RECT& bounds) {
    return {bounds.right - bounds.left, bounds.bottom - bounds.top};
}

bool WantsSiteFirst(IOleObject& object) {
    DWORD status = 0;
    object.GetMiscStatus(DVASPECT_CONTENT, &status);
    return (status & static_cast<DWORD>(OLEMISC_SETCLIENTSITEFIRST)) != 0;
}

/// Gives the control its site and a fresh state in the order that it asks for.
void Begin(LoggingContainer& container, IOleObject& object) {
    auto& hosted = container.Hosted();
    const bool siteFirst = WantsSiteFirst(object);
    if (siteFirst) container.Step("SetClientSite", hosted.SetClientSite());
    container.Step("InitNew", hosted.InitNew());
    if (!siteFirst) container.Step("SetClientSite", hosted.SetClientSite());
}

}  // namespace

DesignedForm PlayFormDesigner(LoggingContainer& container) {
    DesignedForm form;
    auto& hosted = container.Hosted();
    const auto object = Query<IOleObject>(container.Control());
    container.SetUserMode(false);
    Begin(container, *object.Get());
    container.Step("Advise", hosted.Advise());
    const SIZE size = Size(LoggingContainer::place);
    container.Step("SetExtent", hosted.SetExtent(size));
    if (const auto view = Query<IViewObject2>(container.Control()))
        container.Step("GetExtent", view->GetExtent(DVASPECT_CONTENT, -1, nullptr, &form.extent));
    form.bitmap = DrawInactive(container.Control(), size, &form.drawn);
    container.Step("Draw", form.drawn);
    form.metafileRecords = DrawIntoMetafile(container.Control(), size);
    return form;
}

void PlayRunningForm(LoggingContainer& container) {
    auto& hosted = container.Hosted();
    container.SetUserMode(true);
    hosting::Activation activation;
    activation.quick = true;
    container.Step("FreezeEvents", hosted.FreezeEvents(true));
    hosted.Activate(LoggingContainer::place, activation);
    container.Log().Note("> Activate");
    container.Step("UnfreezeEvents", hosted.FreezeEvents(false));
    Pump();
}

void PlayDocument(LoggingContainer& container, IStorage* storage) {
    auto& hosted = container.Hosted();
    const auto object = Query<IOleObject>(container.Control());
    const auto persistence = Query<IPersistStorage>(container.Control());
    container.Step("InitNew", persistence ? persistence->InitNew(storage) : E_NOINTERFACE);
    container.Step("SetClientSite", hosted.SetClientSite());
    container.Step("SetHostNames", object->SetHostNames(L"Host", L"Document"));
    container.Step("Advise", hosted.Advise());
    container.Step("Update", object->Update());
    container.Step("IsUpToDate", object->IsUpToDate());
    container.Step("SetExtent", hosted.SetExtent(Size(LoggingContainer::place)));
    hosted.Move(LoggingContainer::place);
    container.Step("DoVerb(SHOW)", hosted.DoVerb(OLEIVERB_SHOW));
    container.Step("DoVerb(PRIMARY)", hosted.DoVerb(OLEIVERB_PRIMARY));
    container.Step("SetObjectRects", hosted.SetObjectRects());
    if (persistence) {
        container.Step("Save", persistence->Save(storage, TRUE));
        container.Step("SaveCompleted", persistence->SaveCompleted(nullptr));
    }
    Pump();
}

void PlayMinimalHost(LoggingContainer& container) {
    auto& hosted = container.Hosted();
    hosted.Move(LoggingContainer::place);
    container.Step("SetClientSite", hosted.SetClientSite());
    container.Step("DoVerb(SHOW)", hosted.DoVerb(OLEIVERB_SHOW));
    Pump();
}

void PlayClose(LoggingContainer& container, DWORD save) {
    auto& hosted = container.Hosted();
    const auto object = Query<IOleObject>(container.Control());
    container.Step("UIDeactivate", hosted.UIDeactivate());
    container.Step("InPlaceDeactivate", hosted.InPlaceDeactivate());
    container.Step("Unadvise", hosted.Unadvise());
    container.Step("Close", object->Close(save));
    container.Step("TakeSiteAway", hosted.TakeSiteAway());
    Pump();
}

}  // namespace support
