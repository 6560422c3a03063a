import React, { useState } from "react";
import { DndContext, closestCenter, PointerSensor, useSensor, useSensors } from "@dnd-kit/core";
import { SortableContext, useSortable, arrayMove, verticalListSortingStrategy } from "@dnd-kit/sortable";
import { CSS } from "@dnd-kit/utilities";
import { DragDropContext, Droppable, Draggable } from "react-beautiful-dnd";
import { DndProvider, useDrag } from "react-dnd";
import { HTML5Backend } from "react-dnd-html5-backend";
import { format, addDays } from "date-fns";
import differenceInDays from "date-fns/differenceInDays";
import dayjs from "dayjs";
import relativeTime from "dayjs/plugin/relativeTime";
import { DayPicker } from "react-day-picker";
import "react-day-picker/style.css";

dayjs.extend(relativeTime);

function SortableItem({ id }) {
  const { attributes, listeners, setNodeRef, transform, transition } = useSortable({ id });
  return (
    <li ref={setNodeRef} style={{ transform: CSS.Transform.toString(transform), transition }}
      {...attributes} {...listeners} className="rounded border p-2">{id}</li>
  );
}

function Box() {
  const [, drag] = useDrag(() => ({ type: "box", item: { name: "box" } }));
  return <div ref={drag} id="drag-box">drag me</div>;
}

export default function Planner() {
  const [items, setItems] = useState(["Plan", "Build", "Ship"]);
  const sensors = useSensors(useSensor(PointerSensor));
  const start = new Date(2026, 0, 1);
  return (
    <div className="p-4 space-y-4">
      <DndContext sensors={sensors} collisionDetection={closestCenter}
        onDragEnd={({ active, over }) => over && active.id !== over.id &&
          setItems((list) => arrayMove(list, list.indexOf(active.id), list.indexOf(over.id)))}>
        <SortableContext items={items} strategy={verticalListSortingStrategy}>
          <ul id="sortable">{items.map((id) => <SortableItem key={id} id={id} />)}</ul>
        </SortableContext>
      </DndContext>
      <DragDropContext onDragEnd={() => {}}>
        <Droppable droppableId="column">
          {(provided) => (
            <div ref={provided.innerRef} {...provided.droppableProps} id="column">
              <Draggable draggableId="card" index={0}>
                {(drag) => <div ref={drag.innerRef} {...drag.draggableProps} {...drag.dragHandleProps}>card</div>}
              </Draggable>
              {provided.placeholder}
            </div>
          )}
        </Droppable>
      </DragDropContext>
      <DndProvider backend={HTML5Backend}><Box /></DndProvider>
      <p id="dates">{format(addDays(start, 1), "yyyy-MM-dd")} {differenceInDays(addDays(start, 3), start)} {dayjs(start).from(dayjs(start).add(2, "day"))}</p>
      <DayPicker mode="single" month={start} />
    </div>
  );
}
