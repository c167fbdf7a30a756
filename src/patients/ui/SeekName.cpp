#include "patients/ui/SeekName.h"

#include "patients/NameSearch.h"
#include "base/Dialogs.h"
#include "base/RunState.h"
#include "base/ui/WindowPlacement.h"
#include "store/Sql.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>

namespace {

QString captionFor(int purpose)
{
    switch (purpose) {
    case 1:
        return QStringLiteral("Корекция - Търсене по име");
    case 2:
        return QStringLiteral("Стоматологична помощ - Търсене по име");
    case 3:
        return QStringLiteral("Справка за пациент - Търсене по име");
    default:
        return QStringLiteral("Търсене на пациент");
    }
}

} // namespace

SeekName::SeekName(QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_key(new QLineEdit(this))
    , m_ok(new QPushButton(QStringLiteral("Търси"), this))
    , m_cancel(new QPushButton(QStringLiteral("Отказ"), this))
    , m_list(new QComboBox(this))
    , m_bar(new QProgressBar(this))
{
    setObjectName(QStringLiteral("SeekName"));
    setWindowTitle(QStringLiteral("Търсене на пациент"));
    m_key->setObjectName(QStringLiteral("Text1"));
    m_ok->setObjectName(QStringLiteral("OKButton"));
    m_ok->setToolTip(QStringLiteral("Стартира търсенето"));
    m_cancel->setObjectName(QStringLiteral("CancelButton"));
    m_cancel->setToolTip(QStringLiteral("затваря прозореца"));
    m_list->setObjectName(QStringLiteral("Combo1"));
    m_list->setToolTip(QStringLiteral("Списък на намерените имена"));
    m_list->setMinimumWidth(520);
    m_bar->setObjectName(QStringLiteral("ProgBar"));
    m_bar->setRange(1, 1);
    m_key->installEventFilter(this);
    m_list->installEventFilter(this);

    auto *layout = new QGridLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Имена"), this), 0, 0);
    layout->addWidget(m_key, 1, 0);
    layout->addWidget(m_ok, 1, 1);
    layout->addWidget(new QLabel(QStringLiteral("Намерени"), this), 2, 0);
    layout->addWidget(m_list, 3, 0);
    layout->addWidget(m_cancel, 3, 1);
    layout->addWidget(m_bar, 4, 0, 1, 2);

    connect(m_ok, &QPushButton::clicked, this, &SeekName::search);
    connect(m_key, &QLineEdit::returnPressed, this, &SeekName::search);
    connect(m_cancel, &QPushButton::clicked, this, [this] {
        dialogs().information(namesearch::nothingChosenMessage());
        close();
    });
    connect(m_list, &QComboBox::textActivated, this, &SeekName::choose);
    connect(m_list, &QComboBox::highlighted, this, [this] { whiten(m_list); });
}

SeekName *SeekName::openFor(int purpose, QWidget *parent)
{
    run().SeekPurpose = qint16(purpose);
    SeekName *search = openOrMake([parent] {
        auto *made = new SeekName(parent);
        made->setAttribute(Qt::WA_DeleteOnClose);
        return made;
    });
    search->applyCaption();
    bringForward(search);
    return search;
}

void SeekName::closeOpen()
{
    if (SeekName *search = openWindow())
        search->close();
}

void SeekName::applyCaption()
{
    setWindowTitle(captionFor(run().SeekPurpose));
    m_key->setFocus();
}

bool SeekName::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        applyCaption();
    return QWidget::event(event);
}

bool SeekName::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_key && (event->type() == QEvent::FocusIn || event->type() == QEvent::MouseButtonPress)) {
        m_ok->setDefault(true);
        whiten(m_key);
    } else if (watched == m_list && event->type() == QEvent::MouseButtonRelease && m_list->count() == 0) {
        // An empty list opens nothing, and says so.
        choose(QString());
    }
    return QWidget::eventFilter(watched, event);
}

void SeekName::whiten(QWidget *widget) { widget->setStyleSheet(QStringLiteral("background: white;")); }

void SeekName::search()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_list->clear();
    const auto found = namesearch::searchByFirstName(store::clinicDb(), m_key->text(), run().CurrentMedicCode);
    QGuiApplication::restoreOverrideCursor();
    if (!found) {
        dialogs().information(found.error());
        return;
    }
    if (found->patientsOfDoctor == 0) {
        dialogs().information(namesearch::noPatientsMessage());
        return;
    }
    m_bar->setRange(1, found->patientsOfDoctor);
    m_list->addItems(found->entries);
    m_list->setCurrentIndex(-1);
    m_bar->setValue(found->patientsOfDoctor);
    dialogs().information(namesearch::searchDoneMessage());
}

void SeekName::choose(const QString &entry)
{
    m_ok->setDefault(true);
    const auto choice = namesearch::decodeEntry(entry);
    if (!choice) {
        dialogs().information(namesearch::nothingChosenMessage());
        return;
    }
    m_foundName = choice->foundName;
    m_foundEgn = choice->foundEgn;
    // The window the choice opens loads from the list: it is emptied then, so that a row left
    // standing cannot open a second patient behind the first.
    m_list->clear();
    const int purpose = run().SeekPurpose;
    if (purpose >= 1 && purpose <= 3)
        emit patientChosen(purpose, m_foundName, m_foundEgn);
}
