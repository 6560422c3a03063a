import React, { useState } from 'react';
import { Bell, Search, Settings, User, TrendingUp, TrendingDown, DollarSign, Users, ShoppingCart, Activity } from 'lucide-react';

const stats = [
  { label: 'Revenue', value: '$45,231', change: 20.1, icon: DollarSign },
  { label: 'Subscribers', value: '2,350', change: 180.1, icon: Users },
  { label: 'Sales', value: '12,234', change: -4.3, icon: ShoppingCart },
  { label: 'Active now', value: '573', change: 12, icon: Activity },
];

export default function Dashboard() {
  const [query, setQuery] = useState('');
  return (
    <div className="min-h-screen bg-gray-50">
      <header className="flex items-center justify-between bg-white px-6 py-4 shadow-sm">
        <h1 className="text-xl font-bold text-gray-900">Overview</h1>
        <div className="flex items-center gap-4">
          <div className="relative">
            <Search className="absolute left-3 top-1/2 h-4 w-4 -translate-y-1/2 text-gray-400" />
            <input value={query} onChange={e => setQuery(e.target.value)} placeholder="Search..."
              className="rounded-lg border border-gray-200 py-2 pl-9 pr-3 text-sm focus:outline-none focus:ring-2 focus:ring-blue-500" />
          </div>
          <button className="rounded-full p-2 hover:bg-gray-100"><Bell className="h-5 w-5 text-gray-600" /></button>
          <button className="rounded-full p-2 hover:bg-gray-100"><Settings size={20} /></button>
          <User className="h-8 w-8 rounded-full bg-blue-100 p-1 text-blue-600" />
        </div>
      </header>
      <main className="grid grid-cols-1 gap-4 p-6 md:grid-cols-2 lg:grid-cols-4">
        {stats.map(({ label, value, change, icon: Icon }) => (
          <div key={label} className="rounded-xl bg-white p-5 shadow">
            <div className="flex items-center justify-between">
              <span className="text-sm font-medium text-gray-500">{label}</span>
              <Icon className="h-4 w-4 text-gray-400" />
            </div>
            <div className="mt-2 text-2xl font-bold">{value}</div>
            <div className={`mt-1 flex items-center text-xs ${change >= 0 ? 'text-green-600' : 'text-red-600'}`}>
              {change >= 0 ? <TrendingUp className="mr-1 h-3 w-3" /> : <TrendingDown className="mr-1 h-3 w-3" />}
              {change}% from last month
            </div>
          </div>
        ))}
      </main>
    </div>
  );
}
