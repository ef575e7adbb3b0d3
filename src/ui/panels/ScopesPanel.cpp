#include "ui/panels/ScopesPanel.h"

#include "preferences/Preferences.h"
#include "ui/common/Binding.h"
#include "ui/panels/ScopeView.h"
#include "viewer/MoviePlayerController.h"

#include <QComboBox>
#include <QVBoxLayout>

namespace daylark {

ScopesPanel::ScopesPanel(MoviePlayerController& controller, QWidget* parent)
    : QWidget(parent)
    , choice_(new QComboBox(this))
    , view_(new ScopeView(controller.scopes(), this)) {
    setObjectName(QStringLiteral("scopesPanel"));
    choice_->setAccessibleName(tr("Scope"));
    choice_->setToolTip(tr("Which scope is shown"));
    choice_->setFocusPolicy(Qt::NoFocus); // keys stay the viewer's
    binding::toChoice(choice_, controller.preferences().scopeKind, binding::wordChoices<ScopeKind>());
    connect(choice_, &QComboBox::currentTextChanged, this, &ScopesPanel::nameScope);
    nameScope();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->setSpacing(8);
    layout->addWidget(choice_, 0, Qt::AlignLeft);
    layout->addWidget(view_, 1);
}

void ScopesPanel::nameScope() {
    view_->setAccessibleName(tr("Scope: %1").arg(choice_->currentText()));
}

} // namespace daylark
