// The panel edits a module's ports as a script would: each user change sets the value and the
// new-value flag (a button: the press) and fires the module exactly once; showing never fires.

#include "AllPortsModule.h"
#include "HxObjectPool.h"
#include "HxPortObserver.h"
#include "HxPortWidget.h"
#include "HxPropertiesPanel.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

// Stands in for the main window: rebuilds the panel when the shown object's ports change.
class RebuildOnPortsChanged : public HxPortObserver {
  public:
    explicit RebuildOnPortsChanged(HxPropertiesPanel& panel) : mPanel(panel) {}
    void portsChanged(HxObject* object) override {
        if (object == mPanel.shownObject()) mPanel.rebuild();
    }

  private:
    HxPropertiesPanel& mPanel;
};

class HxPropertiesPanelTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        if (qApp) return;
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "test_gui";
        static char* argv[] = {name, nullptr};
        new QApplication(argc, argv);  // lives as long as the process
    }

    void SetUp() override {
        module = new AllPortsModule;
        module->menu.setNum(0, 3);
        pool().addObject(module);
        input = new HxObject;
        input->setLabel("input");
        pool().addObject(input);
        panel = std::make_unique<HxPropertiesPanel>();
        panel->showObject(module);
        panel->show();
    }

    void TearDown() override {
        HxPortObserver::setObserver(nullptr);
        panel.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        pool().removeObject(module);
        pool().removeObject(input);
    }

    static HxObjectPool& pool() { return HxObjectPool::getTheObjectPool(); }

    // The i-th control of type W in the row of `port`.
    template <class W>
    W* control(char const* port, int i = 0) const {
        QWidget* row = panel->findPortWidget(port);
        QList<W*> all = row ? row->findChildren<W*>() : QList<W*>();
        if (i < all.size()) return all[i];
        ADD_FAILURE() << "no control " << i << " in the row of " << port;
        return nullptr;
    }
    // The rows the panel lays out, top to bottom.
    McString rowNames() const {
        QLayout* rows = panel->widget()->layout();
        McString names;
        for (int i = 0; i < rows->count(); ++i)
            if (QWidget* row = rows->itemAt(i)->widget())
                names += (names.empty() ? "" : " ") + row->objectName().toStdString();
        return names;
    }
    // On the box or circle: a check box ignores clicks right of its text.
    static void clickIndicator(QAbstractButton* box) {
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(4, box->height() / 2));
    }
    static void typeIn(QWidget* field, char const* text) {
        QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    }

    AllPortsModule* module = nullptr;
    HxObject* input = nullptr;
    std::unique_ptr<HxPropertiesPanel> panel;
};

const McString allPorts = "data info buttons menu toggles radio slider floats sep drawStyle";

TEST_F(HxPropertiesPanelTest, ClickingAButtonPressesItForExactlyOneUpdate) {
    QTest::mouseClick(control<QPushButton>("buttons", 1), Qt::LeftButton);
    EXPECT_EQ(module->updates, 1);
    EXPECT_EQ(module->hitSeen, 1);
    EXPECT_EQ(module->newPorts, "buttons");
    EXPECT_FALSE(module->buttons.isNew());
    EXPECT_EQ(module->buttons.getIndex(), -1);

    // A button made insensitive after it was shown refuses the press, as `hit` does.
    module->buttons.setSensitivity(2, false);
    control<QPushButton>("buttons", 2)->click();
    EXPECT_EQ(module->updates, 1);
    EXPECT_FALSE(control<QPushButton>("buttons", 2)->isEnabled()) << "the refused press shows the port again";
}

TEST_F(HxPropertiesPanelTest, EveryValueWidgetSetsItsPortAsNewAndFiresOnce) {
    AllPortsModule& m = *module;
    struct Case {
        char const* port;
        std::function<void()> act;
        std::function<bool()> applied;
    };
    auto key = [](QWidget* control, Qt::Key key) { QTest::keyClick(control, key); };
    Case const cases[] = {
        {"menu", [&] { key(control<QComboBox>("menu"), Qt::Key_Down); }, [&] { return m.menu.getIndex(0) == 1; }},
        {"toggles", [&] { clickIndicator(control<QCheckBox>("toggles", 1)); },
         [&] { return m.toggles.getValue(1) == 1; }},
        {"radio", [&] { clickIndicator(control<QRadioButton>("radio", 2)); }, [&] { return m.radio.getValue() == 2; }},
        {"slider", [&] { key(control<QSlider>("slider"), Qt::Key_PageUp); }, [&] { return m.slider.getValue() == 10; }},
        {"slider", [&] { typeIn(control<QSpinBox>("slider"), "42"); }, [&] { return m.slider.getValue() == 42; }},
        {"floats", [&] { typeIn(control<QLineEdit>("floats", 1), "2.5"); },
         [&] { return m.floats.getValue(1) == 2.5f; }},
        {"drawStyle", [&] { key(control<QComboBox>("drawStyle"), Qt::Key_Down); },
         [&] { return m.drawStyle.getStyle() == HxPortDrawStyle::LINES; }},
        {"data", [&] { key(control<QComboBox>("data"), Qt::Key_Down); },
         [&] { return m.portData.getSource() == input; }},
    };
    for (Case const& c : cases) {
        const int before = m.updates;
        c.act();
        EXPECT_EQ(m.updates, before + 1) << c.port;
        EXPECT_EQ(m.newPorts, c.port);
        EXPECT_TRUE(c.applied()) << c.port;
        panel->refresh();  // as the main window does after every fire
    }
    for (HxPort* port : m.getPorts()) EXPECT_FALSE(port->isNew()) << port->getName();

    // Text that is no number is refused without an update, and the field shows the port again.
    const int before = m.updates;
    typeIn(control<QLineEdit>("floats", 1), "abc");
    EXPECT_EQ(m.updates, before);
    EXPECT_EQ(control<QLineEdit>("floats", 1)->text(), "2.5");
}

TEST_F(HxPropertiesPanelTest, RefreshShowsWhatTheProgramChangedWithoutFiring) {
    AllPortsModule& m = *module;
    m.slider.setLabel("Count");
    m.sep.hide();
    m.buttons.setLabel(0, "Start");
    m.buttons.setSensitivity(2, false);
    m.slider.setMinMax(5, 50);
    m.slider.setValue(20);
    m.menu.setNum(0, 2);
    m.menu.setLabel(0, 1, "beta");
    m.menu.setIndex(0, 1);
    m.floats.setMinMax(0, 10);
    m.floats.setValue(0, 7.5f);
    m.toggles.setValue(0, 1);
    m.radio.setValue(1);
    m.drawStyle.setValue(HxPortDrawStyle::POINTS);
    m.info.printf("%d paths", 3);
    m.portData.connect(input);
    panel->refresh();

    EXPECT_EQ(m.updates, 0) << "refresh fired the module";
    EXPECT_EQ(qobject_cast<HxPortWidget*>(panel->findPortWidget("slider"))->label()->text(), "Count");
    EXPECT_TRUE(panel->findPortWidget("sep")->isHidden());
    EXPECT_EQ(control<QPushButton>("buttons", 0)->text(), "Start");
    EXPECT_FALSE(control<QPushButton>("buttons", 2)->isEnabled());
    QSlider* slider = control<QSlider>("slider");
    QSpinBox* spinBox = control<QSpinBox>("slider");
    EXPECT_EQ(std::make_tuple(slider->minimum(), slider->maximum(), slider->value()), std::make_tuple(5, 50, 20));
    EXPECT_EQ(std::make_tuple(spinBox->minimum(), spinBox->maximum(), spinBox->value()), std::make_tuple(5, 50, 20));
    QComboBox* menu = control<QComboBox>("menu");
    EXPECT_EQ(menu->count(), 2);
    EXPECT_EQ(menu->itemText(1), "beta");
    EXPECT_EQ(menu->currentIndex(), 1);
    EXPECT_EQ(control<QLineEdit>("floats", 0)->text(), "7.5");
    EXPECT_EQ(control<QLineEdit>("floats", 0)->toolTip(), "0 to 10");
    EXPECT_TRUE(control<QCheckBox>("toggles", 0)->isChecked());
    EXPECT_TRUE(control<QRadioButton>("radio", 1)->isChecked());
    EXPECT_EQ(control<QComboBox>("drawStyle")->currentIndex(), HxPortDrawStyle::POINTS);
    EXPECT_EQ(control<QLabel>("info", 1)->text(), "3 paths");
    EXPECT_EQ(control<QComboBox>("data")->currentText(), "input");
}

TEST_F(HxPropertiesPanelTest, RowsFollowAddedAndRemovedPortsEvenFromInsideAWidgetsUpdate) {
    module->extra = std::make_unique<HxPortInfo>(module, "extra");
    panel->rebuild();
    EXPECT_EQ(rowNames(), allPorts + " extra");

    // A refresh notices a port list changed behind the panel's back.
    module->extra.reset();
    panel->refresh();
    EXPECT_EQ(rowNames(), allPorts);
    EXPECT_EQ(panel->findPortWidget("extra"), nullptr);

    // The chosen menu's own port goes away in the update it causes, and the panel is rebuilt
    // while the combo box is still emitting its signals.
    RebuildOnPortsChanged observer(*panel);
    HxPortObserver::setObserver(&observer);
    auto* menu = new HxPortMultiMenu(module, "remove", 1);
    module->extra.reset(menu);
    menu->setNum(0, 2);
    panel->rebuild();
    module->onUpdate = [this] {
        module->extra.reset();
        HxPortObserver::notifyPortsChanged(module);
    };
    QPointer<QComboBox> chosen = control<QComboBox>("remove");
    QTest::keyClick(chosen, Qt::Key_Down);
    EXPECT_TRUE(chosen) << "Qt still uses the combo box after the signal that removed its row";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(chosen);
    EXPECT_EQ(module->updates, 1);
    EXPECT_EQ(rowNames(), allPorts);

    // The panel keeps a shown object alive after the pool let it go.
    pool().removeObject(module);
    panel->refresh();
    EXPECT_EQ(rowNames(), allPorts);
    panel->showObject(nullptr);
    EXPECT_EQ(rowNames(), "");
}

}  // namespace
