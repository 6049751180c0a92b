#pragma once

#include "UIView.h"

#include <string>
#include <vector>

// A set of spinning wheels (components) of rows, as UIKit's UIPickerView.
// The data source and delegate are asked through the runtime, with
// NSInteger values as `long`:
//   data source: numberOfComponentsInPickerView: -> long (picker),
//                pickerView:numberOfRowsInComponent: -> long (picker, long);
//   delegate:    pickerView:attributedTitleForRow:forComponent: -> StrongId,
//                pickerView:titleForRow:forComponent: -> std::string,
//                pickerView:didSelectRow:inComponent: (picker, long, long).
// Methods the objects do not have, or have with other types, are skipped.
// Rows and components are read on first use and again by the reload calls.
// Selecting in code tells nobody; a user's pick (pickRow) tells the delegate.
class UIPickerView : public UIView {
    OBJC_CLASS(UIPickerView)
public:
    using UIView::UIView;
    static RefPtr<UIPickerView> create(CGRect frame = CGRectZero) { return make<UIPickerView>(frame); }

    static constexpr double rowHeight = 32;

    // Neither is kept alive, as in UIKit (the owner of the picker usually
    // serves as both); once gone they read as none.
    NSObject* dataSource() const { return m_dataSource.get(); }
    void setDataSource(NSObject*);
    NSObject* delegate() const { return m_delegate.get(); }
    void setDelegate(NSObject* delegate) { m_delegate = delegate; }
    bool showsSelectionIndicator() const { return m_showsSelectionIndicator; }
    void setShowsSelectionIndicator(bool shows) { m_showsSelectionIndicator = shows; }

    long numberOfComponents() const;
    long numberOfRowsInComponent(long component) const;
    void reloadAllComponents();
    void reloadComponent(long component);

    // The row is kept within the component's rows; nothing for a component
    // that does not exist.
    void selectRow(long row, long component, bool animated);
    // -1 for a component without rows or that does not exist.
    long selectedRowInComponent(long component) const;

    // What the delegate gives for a row: an attributed title (an
    // NSAttributedString), else null; and the plain title, else "".
    StrongId attributedTitleForRow(long row, long component) const;
    std::string titleForRow(long row, long component) const;

    // The user turns a wheel to a row: selects it and tells the delegate.
    // False (and nothing happens) when the component or row does not exist.
    bool pickRow(long row, long component);

    // Drawn as iOS 9 draws it: each wheel a cylinder of rows turned so that
    // the selected row faces the viewer in the middle, rows fading and
    // flattening towards the top and bottom edges, with hairlines above and
    // below the middle row when the selection indicator is shown. A row
    // shows its attributed title, else its plain title, in the system font.
    void drawContent(RenderContext&) const override;
    void dumpProperties(nlohmann::json&) const override;

private:
    void loadIfNeeded() const;
    void loadComponent(long component) const;

    WeakPtr<NSObject> m_dataSource;
    WeakPtr<NSObject> m_delegate;
    bool m_showsSelectionIndicator { false };
    mutable bool m_loaded { false };
    mutable std::vector<long> m_rowCounts;
    mutable std::vector<long> m_selectedRows;
};
