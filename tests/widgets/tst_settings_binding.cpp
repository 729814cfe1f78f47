// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Keys.h"
#include "settings/NamedSets.h"
#include "tests/support/RegistryTest.h"
#include "widgets/ColumnState.h"
#include "widgets/SettingsBinding.h"

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto key = settings::keys::root;
constexpr settings::Flag flag{key, u"tFlag", true};
constexpr settings::Number index{key, u"tIndex", 1};
constexpr settings::Number data{key, u"tData", 90};
constexpr settings::Number spin{key, u"tSpin", 20, -50, 50};
constexpr settings::Number slide{key, u"tSlide", 3, 0, 10};
constexpr settings::Number radio{key, u"tRadio", 7};
constexpr settings::Text text{key, u"tText", u"name"};
constexpr settings::Text layout{key, u"tColumns", u""};

// One control of each kind.
struct Form {
    explicit Form(SettingsBinding::Write write) : binding(write)
    {
        box.addItems({u"a"_s, u"b"_s, u"c"_s});
        for (const int value : {80, 90, 100})
            dataBox.addItem(QString::number(value), value);
        group.addButton(&first, 5);
        group.addButton(&second, 7);
        binding.add(&check, flag);
        binding.add(&box, index);
        binding.addData(&dataBox, data);
        binding.add(&spinBox, spin);
        binding.add(&slider, slide);
        binding.add(&group, radio);
        binding.add(&line, text);
    }
    QVariantList shown() const
    {
        return {check.isChecked(), box.currentIndex(), dataBox.currentData(), spinBox.value(), slider.value(),
                group.checkedId(), line.text()};
    }
    void change()
    {
        check.setChecked(false);
        box.setCurrentIndex(2);
        dataBox.setCurrentIndex(0);
        spinBox.setValue(-50);
        slider.setValue(10);
        first.setChecked(true);
        line.setText(u"other"_s);
        emit line.editingFinished();
    }

    QCheckBox check;
    QComboBox box;
    QComboBox dataBox;
    QSpinBox spinBox;
    QSlider slider;
    QRadioButton first;
    QRadioButton second;
    QButtonGroup group;
    QLineEdit line;
    SettingsBinding binding;
};

QVariantList stored()
{
    return {flag.read(), index.read(), data.read(), spin.read(), slide.read(), radio.read(), text.read()};
}

const QVariantList defaults{true, 1, 90, 20, 3, 7, u"name"_s};
const QVariantList changed{false, 2, 80, -50, 10, 5, u"other"_s};

} // namespace

class SettingsBindingTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void showsAndStores();
    void damagedValuesShowAsDefaults();
    void controlsOfOneSettingFollowEachOther();
    void valuesByName();
    void namedSets();
    void dialogsStoreWhenTheySave();
    void columnsComeBack();
    void damagedColumnsAreLeftAlone_data();
    void damagedColumnsAreLeftAlone();
};

void SettingsBindingTest::showsAndStores()
{
    Form form(SettingsBinding::Write::OnChange);
    QCOMPARE(form.shown(), defaults);
    QSignalSpy told(&form.binding, &SettingsBinding::changed);
    form.change();
    QCOMPARE(stored(), changed);
    QCOMPARE(told.size(), 7);
    QCOMPARE(Form(SettingsBinding::Write::OnChange).shown(), changed);
    // What another process wrote.
    spin.write(11);
    form.binding.load();
    QCOMPARE(form.spinBox.value(), 11);
    QCOMPARE(told.size(), 7);
    form.binding.showDefaults();
    QCOMPARE(stored(), defaults);
    // A handle that is dragged writes when it is let go.
    form.slider.setSliderDown(true);
    form.slider.setValue(6);
    QCOMPARE(slide.read(), 3);
    form.slider.setSliderDown(false);
    QCOMPARE(slide.read(), 6);
}

void SettingsBindingTest::damagedValuesShowAsDefaults()
{
    index.write(3);
    data.write(85);
    settings::writeDword(key, spin.name, 51);
    settings::writeString(key, slide.name, u"5");
    radio.write(6);
    QCOMPARE(Form(SettingsBinding::Write::OnChange).shown(), defaults);
}

void SettingsBindingTest::controlsOfOneSettingFollowEachOther()
{
    constexpr settings::Number nearest{key, u"tNear", 5, 0, 10, settings::Number::Outside::Nearest};
    constexpr settings::Flag onlyOne{key, u"tOne", false, true};
    nearest.write(-7);
    settings::writeDword(key, onlyOne.name, 2);
    QSlider slider;
    QSpinBox number;
    QAction action;
    action.setCheckable(true);
    QPlainTextEdit edit;
    SettingsBinding binding(SettingsBinding::Write::OnChange);
    binding.add(&slider, nearest);
    binding.add(&number, nearest);
    binding.add(&action, onlyOne);
    binding.add(&edit, text);
    QCOMPARE(number.value(), 0);
    QVERIFY(!action.isChecked());
    QSignalSpy told(&binding, &SettingsBinding::changed);
    number.setValue(8);
    QCOMPARE(slider.value(), 8);
    slider.setSliderDown(true);
    slider.setValue(3);
    QCOMPARE(number.value(), 3);
    QCOMPARE(nearest.read(), 8);
    slider.setSliderDown(false);
    QCOMPARE(nearest.read(), 3);
    edit.setPlainText(u"two\nlines"_s);
    action.setChecked(true);
    QCOMPARE(text.read(), u"two\nlines"_s);
    QVERIFY(onlyOne.read());
    QCOMPARE(told.size(), 5);
    QVERIFY(!binding.isChanged());
}

void SettingsBindingTest::valuesByName()
{
    Form form(SettingsBinding::Write::OnChange);
    QVariantMap values = form.binding.values();
    QCOMPARE(values.size(), 7);
    QSignalSpy told(&form.binding, &SettingsBinding::changed);
    form.binding.show({{u"tSpin"_s, 99}, {u"tIndex"_s, u"x"_s}, {u"tText"_s, u"new"_s}, {u"none"_s, 1}});
    QCOMPARE(form.shown(), QVariantList({true, 1, 90, 20, 3, 7, u"new"_s}));
    QCOMPARE(text.read(), u"new"_s);
    QCOMPARE(told.size(), 1);
    form.change();
    form.binding.show(values);
    QCOMPARE(stored(), defaults);
}

void SettingsBindingTest::namedSets()
{
    const settings::NamedSets sets(settings::TextList{key, u"tSet", u"tSetCount", 2});
    QVERIFY(sets.save(u"Small"_s, {{u"width"_s, 25}}));
    QVERIFY(sets.save(u"large"_s, {{u"width"_s, 75}}));
    QVERIFY(sets.save(u"Small"_s, {{u"width"_s, 20}}));
    QVERIFY(!sets.save(u"third"_s, {}) && !sets.save({}, {}));
    QCOMPARE(sets.names(), QStringList({u"large"_s, u"Small"_s}));
    QCOMPARE(sets.find(u"Small"_s)->value(u"width"_s).toInt(), 20);
    settings::writeString(key, u"tSet0", u"{ damaged");
    QVERIFY(!sets.find(u"large"_s));
    QVERIFY(sets.remove(u"Small"_s));
    QVERIFY(sets.names().isEmpty() && !settings::valueExists(key, u"tSet0"));
}

void SettingsBindingTest::dialogsStoreWhenTheySave()
{
    Form form(SettingsBinding::Write::OnSave);
    QVERIFY(!form.binding.isChanged());
    form.change();
    QVERIFY(form.binding.isChanged());
    QCOMPARE(stored(), defaults);
    QVERIFY(form.binding.save());
    QVERIFY(!form.binding.isChanged());
    QCOMPARE(stored(), changed);
}

void SettingsBindingTest::columnsComeBack()
{
    QStandardItemModel model(1, 3);
    QHeaderView header(Qt::Horizontal);
    header.setModel(&model);
    header.setSortIndicatorShown(true);
    columns::keep(&header, layout);
    header.moveSection(2, 0);
    header.resizeSection(2, 77);
    header.setSectionHidden(1, true);
    header.setSortIndicator(2, Qt::DescendingOrder);
    QTRY_VERIFY(layout.read().startsWith(u"2:77 0:"_s));

    QHeaderView again(Qt::Horizontal);
    again.setModel(&model);
    again.setSortIndicatorShown(true);
    columns::keep(&again, layout);
    QCOMPARE(columns::stateText(again), layout.read());
    QVERIFY(again.isSectionHidden(1));
    QCOMPARE(again.sortIndicatorSection(), 2);
}

void SettingsBindingTest::damagedColumnsAreLeftAlone_data()
{
    QTest::addColumn<QString>("state");
    for (const char *state :
         {"", "0:100 1:100", "0:100 1:100 1:100", "0:100 1:100 3:100", "0:100 1:100 2:9999999",
          "0:100 1:100 2:x", "0:-100 1:-100 2:-100", "0:100 1:100 2:100 >3", "0:100 1:100 2:100 >x"})
        QTest::newRow(state) << QString::fromLatin1(state);
}

void SettingsBindingTest::damagedColumnsAreLeftAlone()
{
    QFETCH(const QString, state);
    QStandardItemModel model(1, 3);
    QHeaderView header(Qt::Horizontal);
    header.setModel(&model);
    const QString before = columns::stateText(header);
    QVERIFY(!columns::restore(header, state));
    QCOMPARE(columns::stateText(header), before);
}

QTEST_MAIN(SettingsBindingTest)
#include "tst_settings_binding.moc"
