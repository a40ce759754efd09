// Lays out the viewer.
#include "src/platform/qt/forms/viewer_pane.h"

#include <QScrollBar>
#include <QSlider>
#include <QStackedWidget>
#include <QTabBar>

#include "src/platform/qt/picture/picture_widget.h"

static constexpr int kViews = 3;
static constexpr const char* kViewNames[kViews] = {"View Original", "View Target", "Preview"};
static constexpr int kMagnified = 2;  ///< the first two views open the viewer dialog

static QByteArray Member(const char* name, int index)
{
    return QByteArray(name) + '(' + QByteArray::number(index) + ')';
}

// The buttons and the pages of one view.
static QWidget* MakeNavigation(int view, const Translate& t)
{
    auto* pages = Named<QWidget>(Member("framePicNav", view).constData());
    auto* bar = Named<QScrollBar>(Member("HScrollFrame", view).constData(), Qt::Horizontal);
    bar->setMinimumWidth(Space(96));
    bar->setAccessibleName(t("Page"));
    auto* number = Caption(Member("lblFrame", view).constData(), QString());
    number->setMinimumWidth(number->fontMetrics().horizontalAdvance("0000"));
    pages->setLayout(Row({new QLabel(t("Page")), bar, number}));

    QHBoxLayout* row = Row(
        {IconButton(Member("cmdReloadImage", view).constData(), "reload", t("Reload image for viewing"))});
    if (view < kMagnified)
        row->addWidget(IconButton(Member("picZoomMainPicture", view).constData(), "enlarge",
                                  t("Double click to open the image viewer")));
    row->addSpacing(Space(8));
    row->addWidget(pages);
    row->addStretch(1);
    auto* widget = new QWidget;
    widget->setLayout(row);
    return widget;
}

static QWidget* MakeZoom(const Translate& t)
{
    auto* slider = Named<QSlider>("SliderZoom", Qt::Horizontal);
    slider->setFixedWidth(Space(160));
    auto* percentage = Caption("lblZoomPercentage", QString());
    percentage->setMinimumWidth(percentage->fontMetrics().horizontalAdvance("1000%"));
    percentage->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* label_frame = Named<QWidget>("frameLabelZoom");
    auto* label = new QLabel(t("Zoom"));
    label->setBuddy(slider);
    label_frame->setLayout(Row({label}));
    auto* percentage_frame = Named<QWidget>("frameZoomPercentage");
    percentage_frame->setLayout(Row({percentage}));
    auto* widget = new QWidget;
    widget->setLayout(Row({label_frame, slider, percentage_frame}));
    widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return widget;
}

static QScrollBar* MakeOffset(const char* name, Qt::Orientation orientation, const QString& accessible_name)
{
    auto* bar = Named<QScrollBar>(name, orientation);
    bar->setAccessibleName(accessible_name);
    return bar;
}

QWidget* MakeViewerPane(const Translate& t)
{
    QTabBar* tabs = TabRow("tsImageViewer", t("Image viewer"));
    auto* pictures = new QStackedWidget;
    auto* navigation = new QStackedWidget;
    for (int view = 0; view < kViews; ++view) {
        auto* picture = Named<PictureWidget>(Member("ImageViewMain", view).constData());
        picture->setAccessibleName(t(kViewNames[view]));
        // The view's own visibility is the logic's.
        auto* page = new QWidget;
        Column(page)->addWidget(picture);
        pictures->addWidget(page);
        navigation->addWidget(MakeNavigation(view, t));
    }
    navigation->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    for (QStackedWidget* stack : {pictures, navigation})
        QObject::connect(tabs, &QTabBar::currentChanged, stack, &QStackedWidget::setCurrentIndex);

    auto* view = new QGridLayout;
    view->setSpacing(0);
    view->addWidget(pictures, 0, 0);
    view->addWidget(MakeOffset("scrollOffsetY", Qt::Vertical, t("Vertical position")), 0, 1);
    view->addWidget(MakeOffset("scrollOffsetX", Qt::Horizontal, t("Horizontal position")), 1, 0);

    auto* pane = Named<QWidget>("frameImageViewer");
    QVBoxLayout* column = Column(pane);
    column->setSpacing(Space(4));
    column->addWidget(tabs);
    column->addLayout(view, 1);
    column->addLayout(Row({navigation, MakeZoom(t)}));
    return pane;
}
