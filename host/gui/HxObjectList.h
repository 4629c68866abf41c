#pragma once
// HxObjectList: the object pool as a list (data objects and modules, by label, with their
// class as tool tip) and the actions on the selected object: load a file, make a path set
// on a surface, attach a path editor to a path set, remove.

#include <QWidget>

class HxObject;
class QListWidget;
class QPushButton;

class HxObjectList : public QWidget {
    Q_OBJECT
  public:
    explicit HxObjectList(QWidget* parent = nullptr);

    // Rebuilds the list from the pool, keeping the selection where its object remains.
    void refresh();
    HxObject* getSelectedObject() const;
    // Selects the object with this label (nothing if there is none).
    void select(char const* label);

  signals:
    void selectionChanged(HxObject* object);
    void loadRequested();
    void newPathSetRequested(HxObject* surface);
    void attachEditorRequested(HxObject* pathSet);
    void removeRequested(HxObject* object);

  private:
    void selectionMoved();
    void updateButtons();

    QListWidget* mList;
    QPushButton* mLoad;
    QPushButton* mNewPathSet;
    QPushButton* mAttachEditor;
    QPushButton* mRemove;
};
