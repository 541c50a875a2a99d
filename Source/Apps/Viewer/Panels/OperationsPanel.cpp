#include "OperationsPanel.h"

#include <imgui.h>
#include <imgui_stdlib.h>

#include "OSGGraphOpFactory.h"
#include "RowButton.h"
#include "ValueRows.h"
#include "ValueTexts.h"

namespace Viewer
{
void OperationsPanel::draw()
{
    drawChoice();
    drawButtons();
    for(auto const &account : _session.operations.getAccounts())
        drawAccount(account);
    if(_usage.empty())
        return;
    ImGui::Separator();
    ImGui::PushTextWrapPos(0);
    ImGui::TextUnformatted(_usage.c_str());
    ImGui::PopTextWrapPos();
}

void OperationsPanel::drawChoice()
{
    ImGui::SetNextItemWidth(-1);
    if(ImGui::BeginCombo("##operation", _name.empty() ? "Choose an operation" : _name.c_str()))
    {
        for(auto const &prototype : OSG::GraphOpFactoryBase::the()->getPrototypes())
        {
            if(!ImGui::Selectable(prototype->getName().c_str(), prototype->getName() == _name))
                continue;
            _name = prototype->getName();
            _usage = prototype->usage();
            _params.clear();
        }
        ImGui::EndCombo();
    }
    if(_name.empty())
        return;
    ImGui::SetNextItemWidth(-1);
    ImGui::InputTextWithHint("##parameters", "Parameters", &_params);
}

void OperationsPanel::drawButtons()
{
    ImGui::BeginDisabled(_name.empty() || _session.document.getScene() == nullptr);
    if(ImGui::Button("Run"))
        _session.message = _session.operations.run(_name, _params);
    ImGui::EndDisabled();
    ImGui::BeginDisabled(!_session.document.canUndo());
    if(row_button("Undo"))
        _session.message = _session.operations.undo();
    ImGui::EndDisabled();
}

void OperationsPanel::drawAccount(OSG::GraphOpAccount const &account) const
{
    ImGui::Separator();
    ImGui::TextUnformatted((account.name + ' ' + account.params).c_str());
    ImGui::PushID(&account);
    if(begin_values("account"))
    {
        value_row("Nodes before", std::to_string(account.nodesBefore));
        value_row("Nodes after", std::to_string(account.nodesAfter));
        value_row("Removed", std::to_string(account.removed));
        value_row("Moved", std::to_string(account.moved));
        value_row("Other geometry", std::to_string(account.baked));
        value_row("Other material", std::to_string(account.materialsReplaced));
        value_row("Names lost", std::to_string(account.namesCleared));
        value_row("Seconds", text_of_number(account.seconds));
        end_values();
    }
    ImGui::PopID();
}
} // namespace Viewer
