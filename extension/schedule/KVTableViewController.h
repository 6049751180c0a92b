#pragma once

#include <objc/objc.h>

#include <CoreGraphics/CGGeometry.h>

class KVSettings;
class UIScrollView;

// The schedule and notifications table of the panel: its data and its views.
class KVTableViewController final : public NSObject {
    OBJC_CLASS(KVTableViewController)
public:
    KVTableViewController();

    UIScrollView* tableView() const { return m_tableView.get(); }
    void changeFrame(CGRect panelBounds);
    void refreshTableViewLayout();
    void reloadTableViewData();
    void forceReloadTableViewData();
    bool hasLoadedDataAtLeastOnce() const { return m_hasLoadedDataAtLeastOnce; }

private:
    RefPtr<KVSettings> m_settings;
    RefPtr<UIScrollView> m_tableView;
    bool m_hasLoadedDataAtLeastOnce { false };
};
